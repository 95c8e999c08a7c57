// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Takes a picture file apart, so that the program that has it as a resource needs nothing that can read picture files:
/// the width and the height, and the pixels, rows from top to bottom; each a 32-bit word, a pixel as
/// alpha<<24 | red<<16 | green<<8 | blue, the colours multiplied by alpha.
/// @return false when it is no picture
bool PixelsOfPicture(std::string_view file, std::string* bytes);
