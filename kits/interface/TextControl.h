// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"

#include <memory>
#include <string>

/// One line of text that the user edits, with a label to its left.
///
/// Every edit by the user sends the modification message if there is one; Enter sends the message. Changes by the
/// program send nothing, and setting the text that is already there leaves cursor and selection in place.
///
/// When it is attached, it takes the height that its font needs, and keeps the width of its frame.
class BTextControl : public BControl {
public:
    BTextControl(BRect frame, const char* name, const char* label, const char* initialText, BMessage* message,
                 uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BTextControl() override;

    void AttachedToWindow() override;

    /// UTF-8, copied; null is an empty text. Line ends are shown as spaces.
    virtual void SetText(const char* text);
    const char* Text() const { return fText.c_str(); }

    /// Owned from here; replaces (and deletes) the previous one; null removes it.
    virtual void SetModificationMessage(BMessage* message);
    BMessage* ModificationMessage() const { return fModification.get(); }

    /// Where the text begins, in pixels from the left edge of the control; the label has the room before it and is
    /// shortened if it does not fit. Until it is set, the label takes the room that it needs.
    virtual void SetDivider(float position);
    float Divider() const;
    /// The divider at which the label is set in its narrowest letters; a smaller one shortens the label. Main thread.
    float NarrowestLabelWidth();

protected:
    QWidget* MakeWidget() override;
    void UpdateWidget() override;

private:
    std::unique_ptr<BMessage> fModification;
    std::string fText;
    float fDivider = -1;
};
