// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"
#include "kits/support/Color.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "src/support/FFont.h"

#include <cstddef>

/// What a caption's antialiasing goes towards.
enum : int16 { kAATargetChart = 1, kAATargetBackground = 2, kAATargetAverage = 3 };

/// Where a caption is before it was drawn.
inline constexpr BRect kNothingDrawn{1, 1, 0, 0};

/// How one caption of a chart looks and where it is: the value and the title have one each. The text itself is the
/// chart's. A plain value, not shared between threads.
struct ChartCaption {
    FFont font;
    font_height height{};        ///< of the font, kept current by who sets it
    BPoint where;                ///< the origin of the base line, in the chart's coordinates
    BRect drawn = kNothingDrawn; ///< the text as last drawn; invalid: nothing was drawn
    rgb_color color{};           ///< of the text
    rgb_color aaColor{};         ///< what the text's edges fade to, computed from the rest
    float aaValue = 0.25f;       ///< 0.0 to 1.0
    int16 aaTarget = kAATargetAverage;
    bool shown = true;
};

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

/// The longest part of a text, in bytes, that is no longer than the limit, cut between characters.
size_t CutLength(const char* text, size_t length, size_t limit);

/// The pixels that a text covers: from the ascent above to the descent below its base line.
BRect CaptionRect(BPoint where, float textWidth, const font_height& height);
