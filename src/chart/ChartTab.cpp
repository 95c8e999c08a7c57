// SPDX-License-Identifier: MIT
#include "src/chart/ChartTab.h"

#include "kits/interface/Window.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/Changes.h"

namespace {

constexpr float kInset = 3;

} // namespace

ChartTab::ChartTab(BWindow* window, BView* view, BRect chartFrame)
    : BTab(view)
    , fChartFrame(chartFrame)
    , fOtherFrame(window->Frame())
    , fWindow(window)
{
}

void ChartTab::Select(BView* owner)
{
    auto* holder = dynamic_cast<ChartViewHolder*>(View());
    auto* tabs = dynamic_cast<BTabView*>(owner);
    fOtherFrame = fWindow->Frame();
    Changes::Note();
    // The window's change of size must not resize the holder at each step: it is laid out once, at the end.
    if (holder != nullptr)
        holder->SetResizingMode(B_FOLLOW_NONE);
    BTab::Select(owner);
    fWindow->ResizeTo(fChartFrame.Width(), fChartFrame.Height());
    if (holder == nullptr || tabs == nullptr)
        return;

    // The holder's parent is the container, which begins below the strip.
    BRect frame = owner->Bounds();
    frame.bottom -= tabs->TabHeight();
    frame.InsetBy(kInset, kInset);
    holder->MoveTo(frame.LeftTop());
    holder->ResizeTo(frame.Width(), frame.Height());
    holder->SetResizingMode(B_FOLLOW_ALL_SIDES);
}

void ChartTab::Deselect()
{
    fChartFrame = fWindow->Frame();
    Changes::Note();
    BTab::Deselect();
    fWindow->ResizeTo(fOtherFrame.Width(), fOtherFrame.Height());
}
