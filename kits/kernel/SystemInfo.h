// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"
#include "kits/kernel/Types.h"

#include <string>

/// The machine's figures at one moment, as one record of a fixed layout that also travels between processes.
/// Little-endian, without gaps, 508 bytes. What each figure means is told in kits/kernel/record/SystemReader.h.

inline constexpr int32 B_MAX_CPU_COUNT = 8;

#pragma pack(push, 4) // no gaps, and its 32-bit figures stay aligned; take the others by value
struct cpu_info {
    bigtime_t active_time; ///< microseconds this processor was not idle
};

struct system_info {
    int32 id[2];         ///< 0
    bigtime_t boot_time; ///< microseconds since 1970, to the second; by the wall clock at the first reading
    int32 cpu_count;     ///< at least 1; may be more than `cpu_infos` has room for
    int32 cpu_type;      ///< 0
    int32 cpu_revision;  ///< 0
    cpu_info cpu_infos[B_MAX_CPU_COUNT]; ///< the first processors; 0 where there is none
    int64 cpu_clock_speed;               ///< 0
    int64 bus_clock_speed;               ///< 0
    int32 platform_type;                 ///< 0
    int32 max_pages;                     ///< pages of 4096 bytes
    int32 used_pages;
    int32 page_faults; ///< counts on past the largest number to the smallest
    int32 max_sems;
    int32 used_sems;
    int32 max_ports;
    int32 used_ports;
    int32 max_threads;
    int32 used_threads;
    int32 max_teams;
    int32 used_teams;
    char kernel_name[256];      ///< system and release, for example "Linux 6.1.0-13-amd64"
    char kernel_build_date[32]; ///< empty
    char kernel_build_time[32]; ///< empty
    int64 kernel_version;       ///< 0
    bigtime_t busy_wait_time;   ///< 0
    int32 pad[4];
};
#pragma pack(pop)

static_assert(sizeof(system_info) == 508, "the record travels byte for byte");

namespace kits {
/// The largest number of processors that are told apart.
inline constexpr int32 kMaxProcessors = 1024;

/// The most pages of memory that are told: their bytes fit in 64 bits.
inline constexpr int64 kMaxPages = INT64_MAX / 4096;

/// What belongs to a record and has no place in it.
struct SystemFigures {
    bigtime_t time = 0; ///< `system_time` of the reading
    /// The moment up to which the active times count. It is `time`, unless this reading found no processor; then that
    /// of the last reading that did.
    bigtime_t activeUntil = 0;
    int64 maxPages = 1;  ///< as in the record, which holds no more than INT32_MAX of them (8 TiB); at most kMaxPages
    int64 usedPages = 0; ///< at most `maxPages`
};
} // namespace kits

/// Reads this machine's figures now. Any thread; calls are made one after the other.
/// @return `B_OK`, or `B_BAD_VALUE` for null. A figure that cannot be read keeps its last value.
status_t get_system_info(system_info* info);

namespace kits {

/// The same with all that the record has no room for. Readings by several threads have their times in the order in
/// which they were made, so between any two of them no processor was active for longer than the time in between, except
/// after readings that found no processor (see SystemFigures::activeUntil).
/// @param figures      not null
/// @param activeTimes  gets as many as the machine has (`info->cpu_count`) and `capacity` allows; may be null
/// @param capacity     number of elements of `activeTimes`; kMaxProcessors is always enough
/// @return `B_OK`, or `B_BAD_VALUE` for a null `info` or `figures`, a negative capacity, or one without an array
status_t ReadSystem(system_info* info, SystemFigures* figures, bigtime_t* activeTimes, int32 capacity);

/// Tells whether there is a machine to read: always, unless the environment variable KITS_ROOT names a recorded one.
/// @param missing  set to the path that is at fault if the result is not `B_OK`
/// @return why the folder in KITS_ROOT, or `proc` in it, is no folder that can be reached, for example
///         `B_ENTRY_NOT_FOUND`
status_t CheckSystem(std::string* missing);

} // namespace kits
