// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/WidgetView.h"

#include <string>

/// A frame around other views, optionally with a label. Assistive technology uses the label as the name of the group.
/// The box itself shows its view colour; when it is attached it takes its parent's unless it was given one.
class BBox : public kits::WidgetView {
public:
    explicit BBox(BRect frame, const char* name = nullptr, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
                  uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE_JUMP, border_style border = B_FANCY_BORDER);

    void AttachedToWindow() override;
    using BView::SetViewColor;
    void SetViewColor(rgb_color color) override;

    border_style Border() const { return fBorder; } ///< for tests

    /// Copied; null or empty shows none.
    virtual void SetLabel(const char* label);
    const char* Label() const { return fLabel.c_str(); }

private:
    void WidgetCreated(QWidget* widget) override;
    QWidget* MakeWidget() override;
    void UpdateWidget() override;

    std::string fLabel;
    border_style fBorder;
    bool fHasColor = false;
};
