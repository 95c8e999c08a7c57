// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <optional>
#include <string>
#include <string_view>

namespace kits {

/// Parsers of the kernel's small text files. Each takes any text and returns nothing if its figure is missing, cut or
/// no number.

struct MemoryTexts {
    std::optional<uint64> total;     ///< MemTotal, kilobytes
    std::optional<uint64> available; ///< MemAvailable, kilobytes
};

/// Parses `/proc/meminfo`.
[[nodiscard]] MemoryTexts ParseMemInfo(std::string_view text);

/// pgfault of `/proc/vmstat`.
/// @param hint  where to look first: the place of the line at the last call, 0 at first. Set to the place now.
[[nodiscard]] std::optional<uint64> ParsePageFaults(std::string_view text, size_t* hint);

/// The number of threads in `/proc/loadavg`, after its only slash.
[[nodiscard]] std::optional<uint64> ParseThreadCount(std::string_view text);

/// Parses SEMMNS, the second figure of `/proc/sys/kernel/sem`.
[[nodiscard]] std::optional<uint64> ParseLargestSemCount(std::string_view text);

/// Adds up all semaphores of all sets in `/proc/sysvipc/sem`; nothing if its heading is missing or its last line is
/// truncated.
[[nodiscard]] std::optional<uint64> ParseSemCount(std::string_view text);

/// Returns the highest number of a list of processors such as "0-3,8-11".
[[nodiscard]] std::optional<uint64> ParseHighestProcessor(std::string_view text);

/// A control group and its place in the mounted hierarchy.
struct PidsGroup {
    bool isUnified = true; ///< in the unified hierarchy, not in one of its own for process numbers
    std::string path;      ///< begins with a slash

    friend bool operator==(const PidsGroup&, const PidsGroup&) = default;
};

/// Finds the group in `/proc/self/cgroup` that limits the number of processes. Returns nothing if its path leads
/// out of the mounted hierarchy.
[[nodiscard]] std::optional<PidsGroup> ParsePidsGroup(std::string_view text);

} // namespace kits
