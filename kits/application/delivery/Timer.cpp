// SPDX-License-Identifier: MIT
#include "kits/application/Timer.h"

#include "kits/application/EventLoop.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/application/delivery/TimerQueue.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Errors.h"

#include <algorithm>

namespace kits {

Timer::Timer(std::function<void()> action)
    : fAction(std::move(action))
{
}

Timer::~Timer()
{
    Stop();
    if (fDestroyed != nullptr)
        *fDestroyed = true;
}

status_t Timer::Start(bigtime_t interval, bool repeat)
{
    Stop();
    if (interval < 1)
        return B_BAD_VALUE;
    const bigtime_t now = system_time();
    fInterval = interval;
    fRepeat = repeat;
    // A moment beyond the end of time never comes.
    if (interval < B_INFINITE_TIMEOUT - now) {
        fDue = now + interval;
        TimerQueue::Get().Add(this);
        EventLoop::Wake();
    }
    return B_OK;
}

void Timer::Stop()
{
    if (IsRunning())
        TimerQueue::Get().Remove(this);
    fDue = B_INFINITE_TIMEOUT;
}

TimerQueue& TimerQueue::Get()
{
    static TimerQueue& queue = *new TimerQueue;
    return queue;
}

bigtime_t TimerQueue::Deadline() const
{
    bigtime_t deadline = B_INFINITE_TIMEOUT;
    for (const Timer* timer : fTimers) {
        // A timer that is in its call learns of the next moment after that call.
        if (timer->fDestroyed == nullptr)
            deadline = std::min(deadline, timer->fDue);
    }
    return deadline;
}

void TimerQueue::RunDue(bigtime_t now)
{
    const uint64 round = ++fRound;
    while (true) {
        // Anything may have changed since the last call.
        Timer* next = nullptr;
        for (Timer* timer : fTimers)
            if (timer->fDue <= now && timer->fRound < round && timer->fDestroyed == nullptr &&
                (next == nullptr || timer->fDue < next->fDue))
                next = timer;
        if (next == nullptr)
            return;
        next->fRound = round;
        Call(next, now);
    }
}

void TimerQueue::Call(Timer* timer, bigtime_t now)
{
    if (timer->fRepeat)
        timer->fDue += (now - timer->fDue) / timer->fInterval * timer->fInterval + timer->fInterval;
    else
        timer->Stop();
    const DispatchScope scope;
    bool isDestroyed = false;
    timer->fDestroyed = &isDestroyed;
    const std::function<void()> action = timer->fAction;
    action();
    if (!isDestroyed)
        timer->fDestroyed = nullptr;
}

} // namespace kits
