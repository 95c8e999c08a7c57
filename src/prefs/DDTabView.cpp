// SPDX-License-Identifier: MIT
#include "src/prefs/DDTabView.h"

#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "src/prefs/DDTab.h"
#include "src/prefs/PrefsTab.h"

DDTabView::DDTabView(BRect frame)
    : BTabView(frame, "", B_WIDTH_AS_USUAL, B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE_JUMP | B_NAVIGABLE)
{
}

void DDTabView::AddTab(BView* target, BTab* tab)
{
    delete tab;
    BTabView::AddTab(target, new DDTab(nullptr));
}

DDTab* DDTabView::SelectedTab() const
{
    return dynamic_cast<DDTab*>(TabAt(Selection()));
}

void DDTabView::MouseDown(BPoint where)
{
    BTabView::MouseDown(where);
    const DDTab* tab = SelectedTab();
    if (tab != nullptr && tab->LabelFrame().Contains(where))
        fPressedPage = dynamic_cast<PrefsTab*>(tab->View());
}

void DDTabView::MouseMoved(BPoint where, uint32 transit, const BMessage*)
{
    if (transit != B_EXITED_VIEW)
        return;
    const BMessage* current = Window()->CurrentMessage();
    const int32 buttons = current != nullptr ? kits::kButtonsField.Get(*current) : 0;
    if (buttons == 0)
        return;
    if (where.y >= TabHeight())
        return;
    const DDTab* tab = SelectedTab();
    if (tab == nullptr)
        return;
    if ((buttons & static_cast<int32>(B_PRIMARY_MOUSE_BUTTON)) == 0)
        DragAllPages();
    else
        DragPressedPage(tab->LabelFrame());
}

void DDTabView::DragAllPages()
{
    BMessage message;
    // The outline always reaches the corner of the view.
    BRect outline(0, 0, 0, 0);
    for (int32 index = 0; auto* tab = dynamic_cast<DDTab*>(TabAt(index)); index++) {
        auto* page = dynamic_cast<PrefsTab*>(tab->View());
        if (page != nullptr && page->SavePrefsForDD(&message))
            outline = outline | tab->LabelFrame();
    }
    DragMessage(&message, outline, nullptr);
}

void DDTabView::DragPressedPage(BRect outline)
{
    BMessage message;
    if (fPressedPage != nullptr && fPressedPage->SavePrefsForDD(&message))
        DragMessage(&message, outline, nullptr);
}

bool DDTabView::CopyRequested(BMessage* message)
{
    const DDTab* tab = SelectedTab();
    auto* page = tab != nullptr ? dynamic_cast<PrefsTab*>(tab->View()) : nullptr;
    return page != nullptr && page->SavePrefsForDD(message);
}
