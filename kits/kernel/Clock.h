// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>

/// The two clocks. Any thread.

/// Microseconds since the machine was started, time asleep included. Never goes back.
[[nodiscard]] bigtime_t system_time();

/// Microseconds since 1970: `system_time()` after the moment of boot, which stays the same for the whole boot
/// (kits::MomentOfBoot) whatever is done to the wall clock. So it is not the time of day after the clock was set.
/// While the wall clock is not plausible it is the wall clock itself.
[[nodiscard]] bigtime_t real_time_clock_usecs();

namespace kits {

/// The moment at which this boot began, microseconds since 1970: one constant for the whole boot and for every process
/// that keeps it in the same file (SetBootMomentFile). It tells boots apart. Ask for it instead of subtracting one
/// clock from the other: time passes between two readings. While the wall clock is not plausible it is measured by each
/// call.
[[nodiscard]] bigtime_t MomentOfBoot();

/// The source of both clocks. Tests replace the machine's by their own.
/// Called from any thread that asks for a time.
class ClockSource {
public:
    virtual ~ClockSource() = default;
    /// What `system_time` returns.
    virtual bigtime_t SystemTime() = 0;
    /// The wall clock, microseconds since 1970; may jump.
    virtual bigtime_t WallTime() = 0;
    /// Names the boot; empty if that is not known, then the moment of boot is not kept.
    virtual std::string BootId() = 0;
};

/// Takes the times from here; null restores the machine's. The moment of boot is measured anew, and the file of
/// SetBootMomentFile forgotten. Not owned; must live until it is replaced.
void SetClockSource(ClockSource* source);

/// Keeps the moment of boot in this file from now on: takes it from there if it was kept during this boot, else
/// puts what was measured there. An unreadable or broken file, or one of another boot, counts as none. If several
/// processes come at once, all get the same moment. Nothing is written before the wall clock is plausible; as soon
/// as it is, by the next call that asks for the time. Blocks for the writing: call it at start-up.
/// @param path      the file; its folder has to exist
/// @param mayWrite  false: only read it
/// @return `B_OK` if the moment is the kept one; else it holds for this process only, and the status says why:
///         `B_NO_INIT` while the clock is not plausible, or what reading or writing gave
status_t SetBootMomentFile(const char* path, bool mayWrite = true);

/// False while the wall clock is before 2001, as it is on a machine without a clock of its own that has not yet
/// heard of the time. Becomes true by itself. Durations are right all the time.
[[nodiscard]] bool ClockIsPlausible();

} // namespace kits
