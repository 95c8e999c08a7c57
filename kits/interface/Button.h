// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"

/// A push button. Its value is always 0; pressing it, by mouse or with the space key, sends its message.
class BButton : public BControl {
public:
    using BControl::BControl;

    void AttachedToWindow() override;

    /// Makes this the default button of its window: the Enter key presses it wherever the focus is, unless the focused
    /// control uses that key itself. A window has at most one: making another button the default replaces it.
    virtual void MakeDefault(bool isDefault);

protected:
    void UpdateWidget() override;
    QWidget* MakeWidget() override;

private:
    bool fDefault = false;
};
