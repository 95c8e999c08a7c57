// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

class BButton;

/// The row of buttons at the bottom of a preferences window: "Revert all", "Revert" and "Cancel". Their messages
/// (MSG_PREFS_REVERT_ALL, MSG_PREFS_REVERT, MSG_PREFS_CANCEL) carry no fields and go to the window.
class PrefsButtonView : public BView {
public:
    explicit PrefsButtonView(BRect frame);

    /// Lays the buttons out for the present bounds. If the row is too narrow, they overlap.
    void Rerender();
    void AllAttached() override;
    void FrameResized(float width, float height) override;

    /// The height depends on the font; the width is only a token.
    void GetPreferredSize(float* width, float* height) override;

    /// Returns the width below which the buttons would overlap.
    float MinimumWidth();

private:
    BButton* MakeButton(const char* label, uint32 code);

    // Children of this view.
    BButton* fCancel;
    BButton* fRevert;
    BButton* fRevertAll;
};
