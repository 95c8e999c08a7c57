// SPDX-License-Identifier: MIT
#include "src/chart/ChartCaption.h"

namespace {

/// Mixes two colours; `mix` computes each channel of the result.
template <class Mix> rgb_color Mixed(rgb_color one, rgb_color other, Mix mix)
{
    return {mix(one.red, other.red), mix(one.green, other.green), mix(one.blue, other.blue), 0};
}

} // namespace

rgb_color FadeColor(rgb_color text, rgb_color partner, float value)
{
    const float share = 1.0f - value;
    return Mixed(text, partner, [share](uint8 from, uint8 to) {
        // Exact in double: the share has 24 bits, the difference 9.
        const double faded = from - static_cast<double>(share) * (from - to);
        return static_cast<uint8>(static_cast<int32>(faded));
    });
}

rgb_color AverageColor(rgb_color one, rgb_color other)
{
    return Mixed(
        one, other, [](uint8 a, uint8 b) { return static_cast<uint8>((a + b) >> 1); });
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
