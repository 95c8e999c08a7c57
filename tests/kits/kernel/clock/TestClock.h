// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Clock.h"

#include <string>

/// Clocks that a test sets; they replace the machine's while the object lives.
class TestClock : public kits::ClockSource {
public:
    bigtime_t systemTime = 1000000;
    bigtime_t wallTime = 0;
    std::string bootId = "boot-1";

    explicit TestClock(bigtime_t wall)
        : wallTime(wall)
    {
        kits::SetClockSource(this);
    }
    ~TestClock() override { kits::SetClockSource(nullptr); }

    bigtime_t SystemTime() override { return systemTime; }
    bigtime_t WallTime() override { return wallTime; }
    std::string BootId() override { return bootId; }

    /// Lets time pass.
    void Advance(bigtime_t microseconds)
    {
        systemTime += microseconds;
        wallTime += microseconds;
    }
    /// Makes the kit see a restarted program.
    void Restart() { kits::SetClockSource(this); }
};
