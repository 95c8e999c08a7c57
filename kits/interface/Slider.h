// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"

#include <memory>
#include <string>

/// The thumb of a slider; told apart for the program's sake, the toolkit draws its own.
enum thumb_style { B_BLOCK_THUMB, B_TRIANGLE_THUMB };

/// On which side of the bar the hash marks stand.
enum hash_mark_location { B_HASH_MARKS_NONE = 0, B_HASH_MARKS_TOP = 1, B_HASH_MARKS_BOTTOM = 2, B_HASH_MARKS_BOTH = 3 };

/// A horizontal slider over a range of whole numbers: its label above, the bar with hash marks, and below it a text at
/// either end of the range.
///
/// What the user does to it: drags the thumb, clicks beside it, turns the wheel over it while it has the focus, or
/// presses the arrow keys (one step), page keys (a tenth of the range), Home and End. Each new value sends the
/// modification message if there is one, and else the message; with a modification message the message itself follows
/// when the thumb is let go, or at once for a change without dragging. So a slider without a modification message
/// speaks while it moves.
///
/// On being attached it takes the height that its font asks for, and keeps the width of its frame.
class BSlider : public BControl {
public:
    /// @param minValue, maxValue  the ends of the range, both reachable; the value starts at `minValue`. A range the
    ///                            wrong way round is taken the other way
    BSlider(BRect frame, const char* name, const char* label, BMessage* message, int32 minValue, int32 maxValue,
            thumb_style thumb = B_BLOCK_THUMB, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
            uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BSlider() override;

    void AttachedToWindow() override;

    /// Sets the value, held to the range.
    void SetValue(int32 value) override;
    /// Sets the value to the whole number nearest to `position` of the range; `position` is held to 0
    /// and 1, and one that is not a number is 0.
    virtual void SetPosition(float position);
    /// The value's part of the range, from 0 to 1, in single precision; 0 when the range holds one value only.
    float Position() const;

    /// The ends of the range. For tests, which look at windows through it.
    void GetLimits(int32* minValue, int32* maxValue) const;

    /// The texts at the two ends; null removes one.
    virtual void SetLimitLabels(const char* minLabel, const char* maxLabel);
    const char* MinLimitLabel() const { return fMinLabel.c_str(); }
    const char* MaxLimitLabel() const { return fMaxLabel.c_str(); }

    /// Where the marks stand, and how many they are: the first at one end, the last at the other, so fewer than two
    /// show nothing.
    virtual void SetHashMarks(hash_mark_location where);
    hash_mark_location HashMarks() const { return fHashMarks; }
    virtual void SetHashMarkCount(int32 count);
    int32 HashMarkCount() const { return fHashMarkCount; }

    thumb_style Style() const { return fThumb; }

    /// Owned from here; replaces (and deletes) the former; null removes it.
    virtual void SetModificationMessage(BMessage* message);
    BMessage* ModificationMessage() const { return fModification.get(); }

    /// A text shown beside the label, asked for whenever the value changes; the base gives null, which shows nothing.
    /// The text is copied.
    virtual const char* UpdateText() const;

protected:
    QWidget* MakeWidget() override;
    void UpdateWidget() override;

private:
    void UserMoved(int32 value, bool dragging);
    void UserLetGo();

    std::unique_ptr<BMessage> fModification;
    std::string fMinLabel;
    std::string fMaxLabel;
    int32 fMinValue;
    int32 fMaxValue;
    int32 fHashMarkCount = 0;
    hash_mark_location fHashMarks = B_HASH_MARKS_NONE;
    thumb_style fThumb;
};
