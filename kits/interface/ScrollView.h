// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/WidgetView.h"

namespace kits {

/// Base of views that can stand in a BScrollView: their widget, a QAbstractScrollArea, scrolls its own contents, and
/// shows bars and border on request.
class ScrollTarget : public WidgetView {
public:
    using WidgetView::WidgetView;

    void SetScrolling(bool horizontal, bool vertical, border_style border);

protected:
    void UpdateWidget() override;

private:
    border_style fBorder = B_NO_BORDER;
    bool fHorizontalBar = false;
    bool fVerticalBar = false;
};

} // namespace kits

/// A frame around a list or a text, with scroll bars.
///
/// It is made around the target: its frame is the target's, enlarged by border and bars, and the target becomes its
/// child, fills it and follows its size. The bars lie within the target, which scrolls its contents itself, so that
/// coordinates in the target stay those of its visible part.
class BScrollView : public BView {
public:
    /// @param target  a list or text view; owned from here, as every child is. Any other view is shown without bars
    BScrollView(const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = 0,
                bool horizontal = false, bool vertical = false, border_style border = B_FANCY_BORDER);

    BView* Target() const { return fTarget; }
    border_style Border() const { return fBorder; } ///< for tests

    void AttachedToWindow() override;

private:
    BView* fTarget;
    border_style fBorder;
};
