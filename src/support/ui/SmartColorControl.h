// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/ColorControl.h"

/// The colour control in the program's layout: 32 by 8 cells, as large as they need, placed by its parent.
class SmartColorControl : public BColorControl {
public:
    /// @param cellSize  pixels
    /// @param message   sent at every change by the user; owned by the control
    SmartColorControl(BPoint where, float cellSize, BMessage* message);

    /// Copies the shown colour, as a drag of the swatch beside it does.
    bool CopyRequested(BMessage* message) override;
};
