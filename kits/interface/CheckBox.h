// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"

/// A box that is on or off, with its label to its right. Its value is B_CONTROL_ON or B_CONTROL_OFF; any other number
/// that the program sets counts as on. A click, or the space key, toggles it and sends its message.
class BCheckBox : public BControl {
public:
    using BControl::BControl;

    void AttachedToWindow() override;

    void SetValue(int32 value) override;

    /// If the box is narrower than it prefers, its label is set in narrower letters, down to this width; below it, the
    /// label is cut. Main thread.
    float NarrowestWidth();

protected:
    QWidget* MakeWidget() override;
    void UpdateWidget() override;

private:
    bool fHasGrown = false;
};
