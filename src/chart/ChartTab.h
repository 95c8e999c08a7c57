// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/TabView.h"
#include "kits/support/Rect.h"

class BWindow;

/// The tab of a ChartViewHolder. It gives its window one size while it is selected and another while any other tab is;
/// the window keeps its place. It resizes no window that is maximised, full screen or tiled.
///
/// Runs in the window's thread.
class ChartTab : public BTab {
public:
    /// @param window      the window to resize; outlives the tab
    /// @param chartFrame  the window's size on this tab; the present size is that of the other tabs
    ChartTab(BWindow* window, BView* view, BRect chartFrame);

    /// Returns the window's frame as last seen on this tab, and on the others. Only their sizes count.
    BRect ChartFrame() const { return fChartFrame; }
    BRect OtherFrame() const { return fOtherFrame; }
    /// The window calls these to record the sizes that the user gave it.
    void SetChartFrame(BRect frame) { fChartFrame = frame; }
    void SetOtherFrame(BRect frame) { fOtherFrame = frame; }

    void Select(BView* owner) override;
    void Deselect() override;

private:
    BRect fChartFrame;
    BRect fOtherFrame;
    BWindow* fWindow;
};
