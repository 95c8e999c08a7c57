// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Threads.h"

#include <functional>

namespace kits {

/// Calls a function on the main thread, once or repeatedly, with the interface lock held; in nested loops too. Times
/// are those of `system_time`.
///
/// A repeating timer keeps its beat: the n-th call is due n intervals after the start. Calls missed while the main
/// thread was busy or the machine slept are skipped, not made up for.
///
/// Make, start, stop and destroy it with the interface lock held. It may be stopped, restarted and destroyed in its own
/// call.
class Timer {
public:
    explicit Timer(std::function<void()> action);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// First call after this many microseconds, then at this interval if it repeats. Restarts a running timer.
    /// @return `B_BAD_VALUE` for an interval of less than 1 microsecond; the timer is then stopped
    status_t Start(bigtime_t interval, bool repeat = true);
    void Stop();
    bool IsRunning() const { return fDue != B_INFINITE_TIMEOUT; }
    bigtime_t Interval() const { return fInterval; }

private:
    friend class TimerQueue;

    std::function<void()> fAction;
    bigtime_t fDue = B_INFINITE_TIMEOUT;
    bigtime_t fInterval = 0;
    bool fRepeat = false;
    uint64 fRound = 0;          ///< the last pass over the timers that called this one
    bool* fDestroyed = nullptr; ///< during its own call: set if it is destroyed there
};

} // namespace kits
