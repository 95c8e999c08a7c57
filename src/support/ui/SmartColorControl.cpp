// SPDX-License-Identifier: MIT
#include "src/support/ui/SmartColorControl.h"

#include "src/support/ColorMessage.h"

SmartColorControl::SmartColorControl(BPoint where, float cellSize, BMessage* message)
    : BColorControl(where, B_CELLS_32x8, cellSize, "", message, true)
{
    ResizeToPreferred();
    SetResizingMode(B_FOLLOW_NONE);
    SetFlags(Flags() | B_NAVIGABLE_JUMP | B_NAVIGABLE);
}

bool SmartColorControl::CopyRequested(BMessage* message)
{
    MakeColorMessage(message, ValueAsColor());
    return true;
}
