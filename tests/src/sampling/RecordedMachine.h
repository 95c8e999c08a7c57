// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Clock.h"
#include "kits/kernel/Types.h"

#include <array>
#include <string>

/// A machine of ten processors in a folder of its own, with a clock that stands still until a test moves it. All of
/// the test program's system figures come from here. The clock and the active times go on from test to test, for
/// neither ever goes back.
class RecordedMachine : private kits::ClockSource {
public:
    static constexpr int32 kProcessors = 10;

    RecordedMachine();
    ~RecordedMachine() override;

    /// Lets time pass, in which a processor is active for as long as was set with SetLoad() (nothing at first).
    void Advance(bigtime_t microseconds);
    /// Lets time pass, and leaves the files as they are.
    void Pass(bigtime_t microseconds);
    bigtime_t Now() const;

    /// Share of the time in which a processor is active from now on: percent.
    void SetLoad(int32 processor, int32 percent) { fLoads[static_cast<size_t>(processor)] = percent; }
    /// From the next Advance() on the processor is not there, or is again; what it counted stays.
    void SetOffline(int32 processor, bool offline) { fOffline[static_cast<size_t>(processor)] = offline; }
    /// The counts of all processors begin anew.
    void ResetCounts();
    void SetUsedPages(int64 pages);
    void SetPageFaults(int64 faults);

    /// A file of the machine, "proc/..." or "sys/...", until the next machine is made.
    void Write(const std::string& file, const std::string& text) const;
    std::string Text(const std::string& file) const;

private:
    bigtime_t SystemTime() override;
    bigtime_t WallTime() override;
    std::string BootId() override { return {}; }

    void WriteStat() const;

    std::array<int32, kProcessors> fLoads = {};
    std::array<bool, kProcessors> fOffline = {};
};

/// Waits until the sampler's thread has made its first round and sleeps. With a delay of an hour nothing happens from
/// then on but what the test does.
void AwaitSamplerAsleep();
