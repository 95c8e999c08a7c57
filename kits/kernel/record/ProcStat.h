// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <span>
#include <string_view>

namespace kits {

/// How long a processor was not idle, according to `/proc/stat`.
struct ProcessorTime {
    int32 index;
    uint64 ticks; ///< of 10 ms: user, nice, system, irq, softirq and steal
};

/// One tick in microseconds. It is part of the kernel's interface, whatever the rate of its own clock.
inline constexpr bigtime_t kMicrosecondsPerTick = 10000;

/// Parses the lines of single processors at the beginning of `/proc/stat`, up to the first line of another kind.
/// @param text   any text; a line without its end, with something else than numbers, or with fewer than four of them is
///               left out; missing later fields count as 0
/// @param times  filled from the front, in the order of the text, which is that of the index
/// @param isWhole  set to true if a line of another kind follows; may be null
/// @return the number of processors, at most `times.size()`
[[nodiscard]] size_t ParseProcessorTimes(std::string_view text, std::span<ProcessorTime> times, bool* isWhole);

} // namespace kits
