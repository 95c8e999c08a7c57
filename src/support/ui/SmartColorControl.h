// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/ColorControl.h"

/// The colour control as the program wants it: 32 by 8 cells, as large as they need, placed by its parent.
class SmartColorControl : public BColorControl {
public:
    /// @param cellSize  pixels
    /// @param message   sent at every change by the user; becomes the control's own
    SmartColorControl(BPoint where, float cellSize, BMessage* message);

    /// The colour that it shows, as the swatch beside it drags it.
    bool CopyRequested(BMessage* message) override;
};
