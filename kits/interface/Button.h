// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"

/// A push button. Its value is always 0; pressing it, by mouse or with the space key, sends its message.
class BButton : public BControl {
public:
    BButton(BRect frame, const char* name, const char* label, BMessage* message,
            uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BButton() override;

    void AttachedToWindow() override;

    /// Makes this the default button of its window: the Enter key presses it wherever the focus is, unless the focused
    /// control uses that key itself. A window has at most one: making another button the default replaces it.
    virtual void MakeDefault(bool isDefault);

protected:
    void UpdateWidget() override;
    QWidget* MakeWidget() override;

private:
    void Press();

    bool fDefault = false;
};
