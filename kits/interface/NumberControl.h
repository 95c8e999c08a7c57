// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"

/// A field for an integer in a range, without a visible label: SetAccessibleName() gives it its name.
///
/// The user types the number, or changes it with the up and down keys, the two arrows beside it, or the wheel while the
/// field has the focus. Each new number sends the message. Text that is no number in the range sends nothing; when the
/// field loses the focus, the last number replaces such text. The value is the number, and SetValue() holds it to the
/// range.
///
/// When it is attached, it takes the height that its font needs, and grows to the width of the longest number.
class BNumberControl : public BControl {
public:
    /// @param name       the view's name, which assistive technology reads if there is no SetAccessibleName()
    /// @param minValue,  maxValue the ends of the range, both included; the value starts at `minValue`. If they are in
    ///                   the wrong order, they are swapped
    BNumberControl(BRect frame, const char* name, BMessage* message, int32 minValue, int32 maxValue,
                   uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);

    void AttachedToWindow() override;
    void SetValue(int32 value) override;

protected:
    QWidget* MakeWidget() override;
    void UpdateWidget() override;

private:
    int32 fMinValue;
    int32 fMaxValue;
};
