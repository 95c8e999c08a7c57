// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"
#include "kits/support/Color.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"

/// The arithmetic of captions: nothing here draws or keeps anything.

/// The colour that antialiased text fades to.
/// @param text     the text's colour
/// @param partner  what is behind it
/// @param value    1.0 gives the text's colour, 0.0 the partner's
/// @return with alpha 0
rgb_color FadeColor(rgb_color text, rgb_color partner, float value);

/// The colour halfway between two, rounded down per channel.
rgb_color AverageColor(rgb_color one, rgb_color other);

/// Holds a caption inside its view, one pixel off the edges. A text that is wider or higher than the view sticks out at
/// the left or at the top, or at the other side when it stuck out there before.
/// @param where      the origin of the base line; changed
/// @param textWidth  of the text, in pixels
BPoint ModerateStringCoord(BPoint where, BRect bounds, float textWidth, const font_height& height);

/// The pixels that a text covers: from the ascent above to the descent below its base line.
BRect CaptionRect(BPoint where, float textWidth, const font_height& height);
