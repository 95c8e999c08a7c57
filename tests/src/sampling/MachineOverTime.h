// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Clock.h"
#include "kits/kernel/Types.h"

#include <array>
#include <string>

/// A machine of ten processors in a folder of its own, with a clock that stands still until a test moves it. All of the
/// test program's system figures come from here. The clock and the active times continue from test to test, because
/// neither ever goes back.
class MachineOverTime : private kits::ClockSource {
public:
    static constexpr int32 kProcessors = 10;

    MachineOverTime();
    ~MachineOverTime() override;

    /// Lets time pass. Each processor is active for the share that SetLoad() has set (initially 0).
    void Advance(bigtime_t microseconds);
    /// Lets time pass, and leaves the files unchanged.
    void Pass(bigtime_t microseconds);
    bigtime_t Now() const;

    /// Sets the percentage of the time for which a processor is active from now on.
    void SetLoad(int32 processor, int32 percent) { fLoads[static_cast<size_t>(processor)] = percent; }
    /// From the next Advance() on, the processor is offline or online; its counts stay.
    void SetOffline(int32 processor, bool offline) { fOffline[static_cast<size_t>(processor)] = offline; }
    /// Restarts the counts of all processors at zero.
    void ResetCounts();
    void SetUsedPages(int64 pages);
    void SetPageFaults(int64 faults);

    /// Writes a file of the machine, "proc/..." or "sys/...", which lasts until the next machine is made.
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

/// Waits until the sampler's thread has made its first round and sleeps. With a delay of an hour, only the test does
/// anything from then on.
void AwaitSamplerAsleep();
