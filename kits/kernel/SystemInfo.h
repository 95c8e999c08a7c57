#pragma once

#include "kits/kernel/Errors.h"
#include "kits/kernel/Types.h"

/// The machine's figures at one moment, as one record of a fixed layout that also travels between processes.
/// Little-endian, without gaps, 508 bytes. What each figure means is told in kits/kernel/SystemReader.h.

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
} // namespace kits

/// Reads this machine's figures now. Any thread; calls are made one after the other.
/// @return `B_OK`, or `B_BAD_VALUE` for null. A figure that cannot be read keeps its last value.
status_t get_system_info(system_info* info);

/// The same at the moment `now` (of `system_time`, taken just before), with the active time of all processors.
/// @param activeTimes  gets as many as the machine has (`info->cpu_count`) and `capacity` allows; may be null
/// @param capacity     number of elements of `activeTimes`; kits::kMaxProcessors is always enough
/// @return `B_OK`, or `B_BAD_VALUE` for a null `info`, a negative capacity, or one without an array
status_t get_system_info_at(bigtime_t now, system_info* info, bigtime_t* activeTimes, int32 capacity);
