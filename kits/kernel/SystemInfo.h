// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"
#include "kits/kernel/Types.h"

#include <string>

/// The machine's figures at one moment, as one record of a fixed layout that also travels between processes.
/// Little-endian, without gaps, 508 bytes. kits/kernel/record/SystemReader.h defines each figure.

inline constexpr int32 B_MAX_CPU_COUNT = 8;

#pragma pack(push, 4) // no gaps, and its 32-bit figures stay aligned; copy the others before use
struct cpu_info {
    bigtime_t active_time; ///< microseconds this processor was not idle
};

struct system_info {
    int32 id[2];         ///< 0
    bigtime_t boot_time; ///< microseconds since 1970, to the second; by the wall clock at the first reading
    int32 cpu_count;     ///< at least 1; may exceed the room in `cpu_infos`
    int32 cpu_type;      ///< 0
    int32 cpu_revision;  ///< 0
    cpu_info cpu_infos[B_MAX_CPU_COUNT]; ///< the first processors; 0 where there is none
    int64 cpu_clock_speed;               ///< 0
    int64 bus_clock_speed;               ///< 0
    int32 platform_type;                 ///< 0
    int32 max_pages;                     ///< pages of 4096 bytes
    int32 used_pages;
    int32 page_faults; ///< wraps from the largest number to the smallest
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
/// The largest number of processors that the kit distinguishes.
inline constexpr int32 kMaxProcessors = 1024;

/// The largest number of pages that the kit reports: their bytes fit in 64 bits.
inline constexpr int64 kMaxPages = INT64_MAX / 4096;

/// Figures of a reading that the record has no room for.
struct SystemFigures {
    bigtime_t time = 0; ///< `system_time` of the reading
    /// The moment up to which the active times count. It is `time`, unless this reading found no processor; then it is
    /// that of the last reading that did.
    bigtime_t activeUntil = 0;
    int64 maxPages = 1;  ///< as in the record, which holds no more than INT32_MAX of them (8 TiB); at most kMaxPages
    int64 usedPages = 0; ///< at most `maxPages`
};
} // namespace kits

/// Reads this machine's figures now. Any thread; calls run one after the other.
/// @return `B_OK`, or `B_BAD_VALUE` for null. A figure that cannot be read keeps its last value.
status_t get_system_info(system_info* info);

namespace kits {

/// Reads the record and the figures that it has no room for. The times of readings by several threads are in the order
/// of the readings. So between two readings no processor was active for longer than the time between them, except after
/// readings that found no processor (see SystemFigures::activeUntil).
/// @param figures      not null
/// @param activeTimes  gets as many as the machine has (`info->cpu_count`) and `capacity` allows; may be null
/// @param capacity     number of elements of `activeTimes`; kMaxProcessors is always enough
/// @return `B_OK`, or `B_BAD_VALUE` for a null `info` or `figures`, a negative capacity, or one without an array
status_t ReadSystem(system_info* info, SystemFigures* figures, bigtime_t* activeTimes, int32 capacity);

/// Checks that there is a machine to read. That can fail only if the environment variable KITS_ROOT names a recorded
/// one.
/// @param missing  set to the path that is at fault if the result is not `B_OK`
/// @return `B_OK`, or why the folder in KITS_ROOT, or `proc` in it, cannot be used, for example `B_ENTRY_NOT_FOUND`
status_t CheckSystem(std::string* missing);

} // namespace kits
