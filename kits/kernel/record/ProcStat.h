// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <span>
#include <string_view>

namespace kits {

/// How long a processor was not idle, as `/proc/stat` says it.
struct ProcessorTime {
    int32 index;
    uint64 ticks; ///< of 10 ms: user, nice, system, irq, softirq and steal
};

/// One tick in microseconds. It is part of the kernel's interface, whatever the rate of its own clock.
inline constexpr bigtime_t kMicrosecondsPerTick = 10000;

/// Takes the lines of the single processors from the text of `/proc/stat`. They stand at its beginning; the first line
/// of another kind ends them.
/// @param text   any text; a line without its end, with something else than numbers, or with fewer than four of them is
///               left out; missing later fields count as 0
/// @param times  filled from the front, in the order of the text, which is that of the index
/// @param isWhole  set to whether the end of the processors was seen; may be null
/// @return how many there were, at most `times.size()`
[[nodiscard]] size_t ParseProcessorTimes(std::string_view text, std::span<ProcessorTime> times, bool* isWhole);

} // namespace kits
