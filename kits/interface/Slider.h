// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"

#include <string>

/// The thumb of a slider; has no effect, because the toolkit draws its own.
enum thumb_style { B_BLOCK_THUMB, B_TRIANGLE_THUMB };

/// The side of the bar on which the hash marks stand.
enum hash_mark_location { B_HASH_MARKS_NONE = 0, B_HASH_MARKS_TOP = 1, B_HASH_MARKS_BOTTOM = 2, B_HASH_MARKS_BOTH = 3 };

/// A horizontal slider over a range of integers: its label above, the bar with hash marks, and below it a text at
/// either end of the range.
///
/// The user drags the thumb, clicks beside it, turns the wheel over it while it has the focus, or presses the arrow
/// keys (one step), page keys (a tenth of the range), Home and End. Each new value sends the message, also while the
/// thumb moves.
///
/// When it is attached, it takes the height that its font needs, and keeps the width of its frame.
class BSlider : public BControl {
public:
    /// @param minValue,  maxValue the ends of the range, both included; the value starts at `minValue`. If they are in
    ///                   the wrong order, they are swapped
    BSlider(BRect frame, const char* name, const char* label, BMessage* message, int32 minValue, int32 maxValue,
            thumb_style thumb = B_BLOCK_THUMB, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
            uint32 flags = B_WILL_DRAW | B_NAVIGABLE);

    void AttachedToWindow() override;

    /// Sets the value, held to the range.
    void SetValue(int32 value) override;
    /// Sets the value to the integer nearest to the fraction `position` of the range; `position` is held to 0 and 1,
    /// and NaN counts as 0.
    virtual void SetPosition(float position);
    /// The value as a fraction of the range, from 0 to 1, in single precision; 0 if the range contains one value only.
    float Position() const;

    /// The ends of the range. For tests, which look at windows through it.
    void GetLimits(int32* minValue, int32* maxValue) const;

    /// The texts at the two ends; null removes one.
    virtual void SetLimitLabels(const char* minLabel, const char* maxLabel);
    // For tests, as HashMarks() and HashMarkCount().
    const char* MinLimitLabel() const { return fMinLabel.c_str(); }
    const char* MaxLimitLabel() const { return fMaxLabel.c_str(); }

    /// The place and number of the marks: the first at one end, the last at the other, so fewer than two show nothing.
    virtual void SetHashMarks(hash_mark_location where);
    hash_mark_location HashMarks() const { return fHashMarks; }
    virtual void SetHashMarkCount(int32 count);
    int32 HashMarkCount() const { return fHashMarkCount; }

    thumb_style Style() const { return fThumb; } ///< for tests

protected:
    QWidget* MakeWidget() override;
    void UpdateWidget() override;

private:
    std::string fMinLabel;
    std::string fMaxLabel;
    int32 fMinValue;
    int32 fMaxValue;
    int32 fHashMarkCount = 0;
    hash_mark_location fHashMarks = B_HASH_MARKS_NONE;
    thumb_style fThumb;
};
