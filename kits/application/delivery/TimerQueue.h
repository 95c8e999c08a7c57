// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Timer.h"

#include <vector>

namespace kits {

/// The running timers. Use it with the interface lock held.
class TimerQueue {
public:
    static TimerQueue& Get();

    void Add(Timer* timer) { fTimers.push_back(timer); }
    void Remove(Timer* timer) { std::erase(fTimers, timer); }
    bigtime_t Deadline() const;
    /// Calls every due timer once, in the order of their times.
    void RunDue(bigtime_t now);

private:
    static void Call(Timer* timer, bigtime_t now);

    std::vector<Timer*> fTimers;
    uint64 fRound = 0;
};

} // namespace kits
