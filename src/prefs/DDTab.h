// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/TabView.h"
#include "kits/support/Rect.h"

/// A tab that remembers where its label was last drawn, so that a press on it can be told and the label shown as the
/// outline of a drag.
class DDTab : public BTab {
public:
    /// @param view  as for BTab
    explicit DDTab(BView* view);

    void DrawLabel(BView* owner, BRect frame) override;

    /// In the tab view's coordinates; (1, 1, 0, 0), which contains no point, as long as it was never drawn.
    BRect LabelFrame() const { return fLabelFrame; }

private:
    BRect fLabelFrame{1, 1, 0, 0};
};
