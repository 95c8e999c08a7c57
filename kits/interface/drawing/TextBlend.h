#pragma once

#include "kits/support/Color.h"
#include "kits/support/SupportDefs.h"

namespace kits {

/// A colour as a bitmap's word.
constexpr uint32 ToWord(rgb_color color)
{
    return static_cast<uint32>(color.alpha) << 24 | static_cast<uint32>(color.red) << 16 |
           static_cast<uint32>(color.green) << 8 | color.blue;
}

/// One channel on the way from low (coverage 0) to high (coverage 255), to the nearest whole number.
constexpr uint32 BlendChannel(uint32 low, uint32 high, uint32 coverage)
{
    return (low * (255 - coverage) + high * coverage + 127) / 255;
}

/// The word between two words by the coverage of a glyph: 0 gives low, 255 gives high, each channel by itself.
constexpr uint32 BlendWords(uint32 low, uint32 high, uint32 coverage)
{
    return BlendChannel(low >> 24, high >> 24, coverage) << 24 |
           BlendChannel(low >> 16 & 0xFF, high >> 16 & 0xFF, coverage) << 16 |
           BlendChannel(low >> 8 & 0xFF, high >> 8 & 0xFF, coverage) << 8 |
           BlendChannel(low & 0xFF, high & 0xFF, coverage);
}

} // namespace kits
