// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"
#include "kits/support/Color.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"

/// The arithmetic of captions. Nothing here draws or keeps anything.

/// Returns the colour that antialiased text fades to.
/// @param text     the text's colour
/// @param partner  the colour behind the text
/// @param value    1.0 gives the text's colour, 0.0 the partner's
/// @return a colour with alpha 0
rgb_color FadeColor(rgb_color text, rgb_color partner, float value);

/// Returns the colour halfway between two, rounded down in each channel.
rgb_color AverageColor(rgb_color one, rgb_color other);

/// Returns the place nearest to @p where at which a caption lies inside its view, one pixel off the edges. A text that
/// is wider or higher than the view sticks out at the left or at the top, or at the other side when it already stuck
/// out there.
/// @param where      the origin of the base line
/// @param textWidth  of the text, in pixels
BPoint ModerateStringCoord(BPoint where, BRect bounds, float textWidth, const font_height& height);

/// Returns the pixels that a text covers, from the ascent above its base line to the descent below it.
BRect CaptionRect(BPoint where, float textWidth, const font_height& height);
