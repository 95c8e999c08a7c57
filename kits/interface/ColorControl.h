// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Control.h"
#include "kits/support/Color.h"

/// The layout of a colour control's cells: columns times rows.
enum color_control_layout {
    B_CELLS_4x64 = 4,
    B_CELLS_8x32 = 8,
    B_CELLS_16x16 = 16,
    B_CELLS_32x8 = 32,
    B_CELLS_64x4 = 64
};

/// Picks a colour: three ramps, for red, green and blue, each with its number from 0 to 255 to its right. A ramp shows
/// how the colour would change along it.
///
/// The ramps together are as wide and as high as the cells of the layout: 32 by 8 cells of 8 pixels are 256 by 64. By
/// mouse: press or drag on a ramp, or type a number. By keyboard, on a ramp or in a number: the arrow keys move one
/// step, the page keys 16, Home and End to the ends. Every change by the user sends the message.
///
/// The value is the colour packed as red << 24 | green << 16 | blue << 8; alpha is not part of it.
class BColorControl : public BControl {
public:
    /// @param leftTop   where the control lies in its parent; its size is the preferred one
    /// @param cellSize  pixels, at least 1
    /// @param buffered  has no effect: the toolkit always draws the control without flicker
    BColorControl(BPoint leftTop, color_control_layout layout, float cellSize, const char* name,
                  BMessage* message = nullptr, bool buffered = false);

    /// Sets the packed value; ignores the lowest 8 bits.
    void SetValue(int32 value) override;
    void SetValue(rgb_color color);
    /// The value as a colour, alpha 255.
    rgb_color ValueAsColor() const;

    float CellSize() const { return fCellSize; }            ///< for tests
    color_control_layout Layout() const { return fLayout; } ///< for tests

protected:
    QWidget* MakeWidget() override;
    void UpdateWidget() override;

private:
    float fCellSize;
    color_control_layout fLayout;
};
