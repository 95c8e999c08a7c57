#include "kits/application/EventLoop.h"

#include "kits/application/Application.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThreadPrivate.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/loops/PollEventLoop.h"
#include "kits/application/loops/TimerQueue.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/StandardStreams.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <utility>

namespace kits {

namespace {

EventLoop* sCurrent = nullptr;
std::atomic<uint64> sCountUnlocked = 0;

int MakeWakeDescriptor()
{
    // This is the first descriptor that the process makes, before `main`.
    FillStandardStreams();
    const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0)
        std::abort(); // no file descriptor is left at the very start: nothing would ever be handled
    return descriptor;
}

const int sWakeDescriptor = MakeWakeDescriptor();
std::atomic<bool> sIsWoken = false;
thread_local int32 sCountWakeOnce = 0;
thread_local bool sWakeWanted = false;

/// Makes the descriptor unreadable. Whatever was there to be done before is seen by who looks after this.
void ClearWake()
{
    eventfd_t count;
    eventfd_read(sWakeDescriptor, &count);
    sIsWoken.exchange(false);
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
    return sWakeDescriptor;
}

void EventLoop::Wake()
{
    if (sCountWakeOnce > 0)
        sWakeWanted = true;
    else if (!sIsWoken.exchange(true))
        eventfd_write(sWakeDescriptor, 1);
}

WakeOnce::WakeOnce()
{
    ++sCountWakeOnce;
}

WakeOnce::~WakeOnce()
{
    if (--sCountWakeOnce == 0 && std::exchange(sWakeWanted, false))
        EventLoop::Wake();
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

void TakeTurn(const std::function<bool()>& stop)
{
    ClearWake();
    if (TakeQuitSignal() && be_app != nullptr)
        be_app->PostMessage(B_QUIT_REQUESTED);
    PostOffice& office = PostOffice::Get();
    const uint64 end = office.NextNumber();

    RunOutermostActions();
    RunMainThreadActions();
    TimerQueue::Get().RunDue(system_time());
    while ((stop == nullptr || !stop()) && office.DispatchNext(end))
        RunOutermostActions();
    RunOutermostActions();

    if (office.HasMessages() || HasActionsToRun())
        EventLoop::Wake();
}

void WaitForWork(bigtime_t until)
{
    // A day at most: then the clock is asked again.
    constexpr bigtime_t kLongest = 24 * 3600 * bigtime_t(1000000);
    const bigtime_t left =
        until == B_INFINITE_TIMEOUT ? kLongest : std::clamp(until - system_time(), bigtime_t(0), kLongest);
    timespec timeout;
    timeout.tv_sec = left / 1000000;
    timeout.tv_nsec = left % 1000000 * 1000;

    InterfaceLock& lock = InterfaceLock::Get();
    const int32 depth = lock.ReleaseAll();
    pollfd descriptor{sWakeDescriptor, POLLIN, 0};
    ppoll(&descriptor, 1, &timeout, nullptr);
    lock.Restore(depth);
}

} // namespace kits
