// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"

class BMessage;

/// A colour as it is dragged and copied: a B_PASTE message with "RGBColor". Other programs take it as a colour, too.
void MakeColorMessage(BMessage* message, rgb_color color);

/// The colour in such a message, whoever sent it.
/// @return false, and @p color is as before, if there is none
bool FindColorMessage(const BMessage& message, rgb_color* color);
