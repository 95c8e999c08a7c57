// SPDX-License-Identifier: MIT
#include "src/prefs/PrefsWindow.h"

#include "kits/application/Message.h"
#include "kits/interface/Screen.h"
#include "src/prefs/DDTabView.h"
#include "src/prefs/PrefsButtonView.h"
#include "src/prefs/PrefsLayout.h"
#include "src/prefs/PrefsTab.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"

#include <algorithm>
#include <cmath>

namespace {

/// Free space at the edge of the screen for the frame that a window manager draws; pixels.
constexpr float kOutline = 8;

} // namespace

PrefsWindow::PrefsWindow(BRect frame, const char* title, BHandler* target, SmartWindow** ownerSlot)
    : SmartWindow(frame, title, target, ownerSlot, 0)
{
    initialise();
}

PrefsWindow::PrefsWindow(BMessage* archive, const char* title, BHandler* target, SmartWindow** ownerSlot)
    : SmartWindow(archive, title, target, ownerSlot)
{
    initialise();
}

void PrefsWindow::initialise()
{
    const BRect bounds = Bounds();
    fButtons = new PrefsButtonView(bounds);
    fTabView = new DDTabView(bounds);
    // The keyboard focus starts on the pages.
    AddChild(fTabView);
    AddChild(fButtons);
    LayOut(bounds.Width(), bounds.Height());
}

void PrefsWindow::LayOut(float width, float height)
{
    const float rowHeight = PreferredSizeOf(fButtons).y;
    fTabView->ResizeTo(width, height - rowHeight);
    fButtons->MoveTo(0, height - rowHeight + 1);
    fButtons->ResizeTo(width, rowHeight);
}

void PrefsWindow::FrameResized(float width, float height)
{
    DisableUpdates();
    LayOut(width, height);
    EnableUpdates();
    SmartWindow::FrameResized(width, height);
}

void PrefsWindow::AddPrefsTab(PrefsTab* page)
{
    const bool isFirst = fTabView->CountTabs() == 0;
    fTabView->AddTab(page, nullptr);
    fTabView->TabAt(fTabView->CountTabs() - 1)->SetLabel(Tr(page->Name()));
    page->SetOwner(fTabView);
    if (isFirst)
        fTabView->Select(0);
}

void PrefsWindow::ForEachPage(const std::function<void(PrefsTab*)>& action)
{
    for (int32 index = 0; BTab* tab = fTabView->TabAt(index); index++)
        if (auto* page = dynamic_cast<PrefsTab*>(tab->View()))
            action(page);
}

void PrefsWindow::RevertAll()
{
    ForEachPage([](PrefsTab* page) { page->Revert(); });
}

void PrefsWindow::GetState()
{
    ForEachPage([](PrefsTab* page) { page->GetState(); });
}

void PrefsWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_PREFS_REVERT: {
        BTab* tab = fTabView->TabAt(fTabView->Selection());
        if (auto* page = tab != nullptr ? dynamic_cast<PrefsTab*>(tab->View()) : nullptr)
            page->Revert();
        GetState();
        break;
    }
    case MSG_PREFS_REVERT_ALL:
        RevertAll();
        GetState();
        break;
    case MSG_PREFS_CANCEL:
        RevertAll();
        PostMessage(B_QUIT_REQUESTED);
        break;
    default:
        SmartWindow::MessageReceived(message);
    }
}

void PrefsWindow::Show()
{
    if (fOwnersWidth < 0) {
        float ignored = 0;
        GetSizeLimits(&fOwnersWidth, &ignored, &fOwnersHeight, &ignored);
        HoldPages();
    }
    SmartWindow::Show();
}

void PrefsWindow::HoldPages()
{
    // The pages are measured when the window is shown.
    if (fOwnersWidth < 0)
        return;
    float pageWidth = fButtons->MinimumWidth() - 2 * kPageMargin;
    float pageHeight = 0;
    ForEachPage([&](PrefsTab* page) {
        float width = 0;
        float height = 0;
        page->GetMinimumSize(&width, &height);
        pageWidth = std::max(pageWidth, width);
        pageHeight = std::max(pageHeight, height);
    });
    float ignored = 0;
    float maxWidth = 0;
    float maxHeight = 0;
    GetSizeLimits(&ignored, &maxWidth, &ignored, &maxHeight);
    const float minWidth = std::max(fOwnersWidth, std::ceil(pageWidth + 2 * kPageMargin));
    const float minHeight = std::max(
        fOwnersHeight, std::ceil(pageHeight + 2 * kPageMargin + fTabView->TabHeight() + PreferredSizeOf(fButtons).y));
    // The limits may make the window larger where it stands.
    BRect frame = Frame();
    SetSizeLimits(minWidth, maxWidth, minHeight, maxHeight);
    if (frame.Width() >= minWidth && frame.Height() >= minHeight)
        return;
    frame.right = std::max(frame.right, frame.left + minWidth);
    frame.bottom = std::max(frame.bottom, frame.top + minHeight);
    const BRect screen = BScreen(this).Frame();
    const float left = std::max(screen.left, std::min(frame.left, screen.right - kOutline - frame.Width()));
    const float top = std::max(screen.top, std::min(frame.top, screen.bottom - kOutline - frame.Height()));
    MoveTo(left, top);
    ResizeTo(frame.Width(), frame.Height());
}

void PrefsWindow::Quit()
{
    ForEachPage([](PrefsTab* page) { page->ForgetModel(); });
    SmartWindow::Quit();
}
