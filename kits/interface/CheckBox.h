// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"

/// A box that is on or off, its label on its right. Its value is B_CONTROL_ON or B_CONTROL_OFF; any other number that
/// the program sets counts as on. A click, or the space key, turns it over and sends its message.
class BCheckBox : public BControl {
public:
    BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
              uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BCheckBox() override;

    void AttachedToWindow() override;

    void SetValue(int32 value) override;

    /// Made narrower than it prefers, its label is set in narrower letters, down to this width; below, it is cut.
    /// Main thread.
    float NarrowestWidth();

protected:
    QWidget* MakeWidget() override;
    void UpdateWidget() override;

private:
    bool fHasGrown = false;
};
