// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/TabView.h"
#include "kits/support/Rect.h"

/// A tab that remembers where its label was last drawn, so that a press on the label can be recognised and a drag can
/// show it as an outline.
class DDTab : public BTab {
public:
    /// @param view  as for BTab
    explicit DDTab(BView* view);

    void DrawLabel(BView* owner, BRect frame) override;

    /// In the tab view's coordinates; (1, 1, 0, 0), which contains no point, until it is drawn.
    BRect LabelFrame() const { return fLabelFrame; }

private:
    BRect fLabelFrame{1, 1, 0, 0};
};
