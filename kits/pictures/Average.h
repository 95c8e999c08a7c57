// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace kits {

/// The average of a picture's pixels: each part from 0 to 65535, the colours multiplied by their pixels' opacity.
struct Average {
    uint32_t red;
    uint32_t green;
    uint32_t blue;
    uint32_t alpha;
};

/// Reads a picture file and averages its pixels; of an animation the first frame. Every format is read for which the
/// toolkit has a plugin. Pixels are read at the picture's own size and depth. Drawings without pixels (SVG) are drawn
/// at a small size, and pictures of more than 256 MB are read smaller where their format can.
///
/// Null for what is no regular file, for a file above 256 MB, a picture of more than 1000 million pixels or 512 MB, and
/// for one that cannot be read. May need much time and memory within that, or end the process: see LimitProcess().
///
/// Needs the toolkit's application object.
std::optional<Average> AverageOf(const char* path);

} // namespace kits
