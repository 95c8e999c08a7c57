// SPDX-License-Identifier: MIT
#include "kits/application/EventLoop.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/MainWait.h"
#include "kits/application/delivery/Delivery.h"
#include "kits/application/delivery/LoopGuest.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/application/delivery/PollEventLoop.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/delivery/TimerQueue.h"
#include "kits/application/delivery/WakeSet.h"
#include "kits/kernel/Clock.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <atomic>

namespace kits {

namespace {

EventLoop* sCurrent = nullptr;
std::atomic<uint64> sCountUnlocked = 0;
std::atomic<uint64> sCountElsewhere = 0;

thread_local bool sIsTurnBeginning = false;

/// Consumes all wakes, and lets the guest read its descriptors; the new turn handles what the guest posts.
void BeginTurn()
{
    sIsTurnBeginning = true;
    std::array<WakeSet::Number, 16> space;
    for (const WakeSet::Number number : WakeSet::Clear(space))
        LoopGuest::Get()->Read(number);
    sIsTurnBeginning = false;
}

/// Runs the rest of a turn.
void EndTurn(const std::function<bool()>& stop)
{
    PostOffice& office = PostOffice::Get();
    if (TakeQuitSignal())
        DeliverCopy({ThisTeam(), kApplicationToken}, BMessage(B_QUIT_REQUESTED), Address(), false);
    const uint64 end = office.BeginTurn();

    RunOutermostActions();
    RunMainThreadActions();
    TimerQueue::Get().RunDue(system_time());
    while ((stop == nullptr || !stop()) && office.DispatchNext(end))
        RunOutermostActions();
    RunOutermostActions();

    if (office.HasMessages() || HasActionsToRun())
        EventLoop::Wake();
}

} // namespace

EventLoop& EventLoop::Current()
{
    static PollEventLoop sPollLoop;
    return sCurrent != nullptr ? *sCurrent : sPollLoop;
}

void EventLoop::SetCurrent(EventLoop* loop)
{
    sCurrent = loop;
}

int EventLoop::WakeDescriptor()
{
    return WakeSet::Descriptor();
}

void EventLoop::Wake()
{
    if (!sIsTurnBeginning)
        WakeSet::Wake();
}

bigtime_t EventLoop::Deadline()
{
    return TimerQueue::Get().Deadline();
}

void EventLoop::RunDue()
{
    TakeTurn(nullptr);
}

void EventLoop::NoteEvent()
{
    if (!InterfaceLock::Get().IsHeld())
        ++sCountUnlocked;
}

uint64 EventLoop::CountUnlockedEvents()
{
    return sCountUnlocked;
}

void EventLoop::NoteEventElsewhere()
{
    ++sCountElsewhere;
}

uint64 EventLoop::CountEventsElsewhere()
{
    return sCountElsewhere;
}

bool EventLoop::RunIfOnlyStreams()
{
    BeginTurn();
    if (!PostOffice::Get().HasOnlyStreams() || HasActionsToRun() || Deadline() <= system_time()) {
        Wake();
        return false;
    }
    EndTurn(nullptr);
    return true;
}

void TakeTurn(const std::function<bool()>& stop)
{
    BeginTurn();
    EndTurn(stop);
}

void WaitForWork(bigtime_t until)
{
    // At most a day: then the clock is read again.
    constexpr bigtime_t kLongest = 24 * 3600 * bigtime_t(1000000);
    const bigtime_t left =
        until == B_INFINITE_TIMEOUT ? kLongest : std::clamp(until - system_time(), bigtime_t(0), kLongest);
    timespec timeout;
    timeout.tv_sec = left / 1000000;
    timeout.tv_nsec = left % 1000000 * 1000;

    MainWait wait;
    wait.Begin();
    pollfd descriptor{WakeSet::Descriptor(), POLLIN, 0};
    ppoll(&descriptor, 1, &timeout, nullptr);
    wait.End();
}

} // namespace kits
