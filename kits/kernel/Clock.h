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

/// The moment at which this boot began, in microseconds since 1970: one constant for the whole boot and for every
/// process that keeps it in the same file (SetBootMomentFile). It identifies the boot. Call this instead of subtracting
/// one clock from the other: time passes between two readings. While the wall clock is not plausible, each call
/// measures it again.
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
    /// Identifies the boot; empty if that is unknown, and then the moment of boot is not kept.
    virtual std::string BootId() = 0;
};

/// For tests: takes the times from this source; null restores the machine's. The moment of boot is measured again, and
/// the file of SetBootMomentFile forgotten. Not owned; must live until it is replaced.
void SetClockSource(ClockSource* source);

/// Keeps the moment of boot in this file from now on: reads it if it was kept during this boot, otherwise writes the
/// measured one. An unreadable or broken file, or one of another boot, counts as none. If several processes call this
/// at once, all get the same moment. Nothing is written before the wall clock is plausible; once it is, the next call
/// that reads the time writes the file. Blocks while it writes: call it at start-up.
/// @param path      the file; its folder must exist
/// @param mayWrite  false: only read it
/// @return `B_OK` if the moment is the kept one; otherwise it is valid in this process only, and the status says why:
///         `B_NO_INIT` while the clock is not plausible, or the error of reading or writing
status_t SetBootMomentFile(const char* path, bool mayWrite = true);

/// False while the wall clock is before 2001, as on a machine without a clock of its own that does not know the time
/// yet. Becomes true by itself. Durations are always right.
[[nodiscard]] bool ClockIsPlausible();

} // namespace kits
