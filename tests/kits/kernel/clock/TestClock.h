// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Clock.h"

#include <string>

/// Clocks that a test sets, in place of the machine's as long as it lives.
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

    /// Time passes.
    void Advance(bigtime_t microseconds)
    {
        systemTime += microseconds;
        wallTime += microseconds;
    }
    /// What the rest of the program sees after another start of it.
    void Restart() { kits::SetClockSource(this); }
};
