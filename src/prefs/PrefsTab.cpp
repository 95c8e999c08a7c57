// SPDX-License-Identifier: MIT
#include "src/prefs/PrefsTab.h"

#include "kits/interface/Control.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/TabView.h"
#include "src/prefs/PrefsLayout.h"
#include "src/prefs/PrefsWindow.h"
#include "src/support/ui/MenuTargets.h"

namespace {

/// Sets the target of all controls, lists and menus in a view.
void SetTargets(const BView* view, BHandler* target)
{
    for (int32 i = 0; BView* child = view->ChildAt(i); i++)
        // A menu field is a control as well, but the items of its menu send the messages.
        if (auto* field = dynamic_cast<BMenuField*>(child))
            SetTargetForItemsRecursive(field->Menu(), target);
        else if (auto* control = dynamic_cast<BInvoker*>(child))
            control->SetTarget(target);
        else
            SetTargets(child, target);
}

} // namespace

PrefsTab::PrefsTab(const char* name)
    : BView(BRect(0, 0, 100, 100), name, B_FOLLOW_ALL, B_WILL_DRAW | B_FRAME_EVENTS)
{
    SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
}

void PrefsTab::AllAttached()
{
    const BRect room = fOwner->Bounds();
    ResizeTo(room.Width() - 2 * kPageMargin, room.bottom - fOwner->TabHeight() - room.top - 2 * kPageMargin);
    MoveTo(kPageMargin, kPageMargin);
    if (fNeedsRerender)
        Rerender();
    GetState();
    SetTargets(this, this);
}

void PrefsTab::FrameResized(float, float)
{
    Rerender();
}

void PrefsTab::Rerender()
{
    fNeedsRerender = false;
}

void PrefsTab::MinimumSizeChanged()
{
    if (auto* window = dynamic_cast<PrefsWindow*>(Window()))
        window->HoldPages();
}

bool PrefsTab::CopyRequested(BMessage* message)
{
    return SavePrefsForDD(message);
}
