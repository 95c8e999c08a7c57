// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"
#include "kits/support/SupportDefs.h"

namespace kits {

/// Returns a colour as a bitmap's word.
constexpr uint32 ToWord(rgb_color color)
{
    return static_cast<uint32>(color.alpha) << 24 | static_cast<uint32>(color.red) << 16 |
           static_cast<uint32>(color.green) << 8 | color.blue;
}

/// Returns the word between two words by the coverage of a glyph: 0 gives low, 255 gives high, each channel separately.
constexpr uint32 BlendWords(uint32 low, uint32 high, uint32 coverage)
{
    // Two channels at once, each in a half of a word. Neither sum overflows its half, and as 255 is odd, none lies in
    // the middle between two integers.
    constexpr uint32 kEveryOther = 0x00FF00FF;
    const auto blend = [coverage](uint32 lowPair, uint32 highPair) {
        const uint32 sums = lowPair * (255 - coverage) + highPair * coverage + 0x00800080;
        return (sums + (sums >> 8 & kEveryOther)) >> 8 & kEveryOther;
    };
    return blend(low >> 8 & kEveryOther, high >> 8 & kEveryOther) << 8 | blend(low & kEveryOther, high & kEveryOther);
}

} // namespace kits
