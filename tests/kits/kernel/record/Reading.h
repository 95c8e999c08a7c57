// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/record/SystemReader.h"
#include "tests/support/RecordedMachine.h"

#include <cstring>
#include <vector>

inline constexpr bigtime_t kSecond = 1000000;
inline constexpr bigtime_t kTick = 10000;
inline constexpr bigtime_t kBetweenLimits = 10 * kSecond;

/// A reader and its last reading.
struct Reading {
    kits::SystemReader reader;
    bigtime_t now = 5 * kSecond;
    system_info info;
    std::vector<bigtime_t> active;

    explicit Reading(const char* root)
        : reader(root)
        , active(kits::kMaxProcessors, -1)
    {
        Read(0);
    }
    explicit Reading(const RecordedMachine& machine)
        : Reading(machine.Root())
    {
    }
    void Read(bigtime_t later)
    {
        now += later;
        memset(&info, 0xAA, sizeof(info));
        reader.Read(now, &info, active.data(), static_cast<int32>(active.size()));
    }
};

inline bigtime_t ActiveInRecord(const system_info& info, size_t index)
{
    return info.cpu_infos[index].active_time;
}
