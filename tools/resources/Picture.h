// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Takes a picture file apart, so that the program with the picture as a resource needs no reader of picture files. The
/// result holds the width and the height, and the pixels, rows from top to bottom; each pixel is a 32-bit word,
/// alpha<<24 | red<<16 | green<<8 | blue, the colours multiplied by alpha.
/// @return false if the file is no picture
bool PixelsOfPicture(std::string_view file, std::string* bytes);
