// SPDX-License-Identifier: MIT
#include "src/chart/ChartCaption.h"

namespace {

uint8 Fade(uint8 text, uint8 partner, float share)
{
    // Exact in double: the share has 24 bits, the difference 9.
    const double faded = text - static_cast<double>(share) * (text - partner);
    return static_cast<uint8>(static_cast<int32>(faded));
}

uint8 Average(uint8 one, uint8 other)
{
    return static_cast<uint8>((one + other) >> 1);
}

} // namespace

rgb_color FadeColor(rgb_color text, rgb_color partner, float value)
{
    const float share = 1.0f - value;
    rgb_color result;
    result.red = Fade(text.red, partner.red, share);
    result.green = Fade(text.green, partner.green, share);
    result.blue = Fade(text.blue, partner.blue, share);
    result.alpha = 0;
    return result;
}

rgb_color AverageColor(rgb_color one, rgb_color other)
{
    rgb_color result;
    result.red = Average(one.red, other.red);
    result.green = Average(one.green, other.green);
    result.blue = Average(one.blue, other.blue);
    result.alpha = 0;
    return result;
}

BPoint ModerateStringCoord(BPoint where, BRect bounds, float textWidth, const font_height& height)
{
    const float rightmost = bounds.right - textWidth - 1;
    if (where.x < 1)
        where.x = 1;
    else if (where.x > rightmost)
        where.x = rightmost;

    const float lowest = bounds.bottom - height.descent - 1;
    if (where.y < height.ascent + 1)
        where.y = height.ascent + 1;
    else if (where.y > lowest)
        where.y = lowest;
    return where;
}

BRect CaptionRect(BPoint where, float textWidth, const font_height& height)
{
    return BRect(where.x, where.y - height.ascent, where.x + textWidth, where.y + height.descent);
}
