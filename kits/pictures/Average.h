// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace kits {

/// The average of a picture's pixels: each component from 0 to 65535, the colours multiplied by their pixels' opacity.
struct Average {
    uint32_t red;
    uint32_t green;
    uint32_t blue;
    uint32_t alpha;
};

/// Reads a picture file and averages its pixels; for an animation, those of the first frame. Reads every format for
/// which the toolkit has a plugin. Reads pixels at the picture's own size and depth. Draws drawings without pixels
/// (SVG) at a small size, and reads pictures of more than 256 MB smaller if their format permits it.
///
/// Returns nothing for anything but a regular file, for a file above 256 MB, for a picture of more than 1000 million
/// pixels or 512 MB, and for one that cannot be read. Within that it may need much time and memory, or end the process:
/// see LimitProcess() in main.cpp.
///
/// Needs the toolkit's application object.
std::optional<Average> AverageOf(const char* path);

} // namespace kits
