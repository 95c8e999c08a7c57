// SPDX-License-Identifier: MIT
#include "kits/kernel/Errors.h"
#include "kits/kernel/threads/ThreadRecord.h"

#include <exception>

namespace kits {

ThreadRecord::Deadline ThreadRecord::DeadlineIn(bigtime_t microseconds)
{
    const Deadline now = std::chrono::steady_clock::now();
    const auto room = std::chrono::duration_cast<std::chrono::microseconds>(kNoDeadline - now).count();
    return microseconds < room ? now + std::chrono::microseconds(microseconds) : kNoDeadline;
}

bool ThreadRecord::IsNew() const
{
    std::lock_guard lock(fMutex);
    return !fIsStarted;
}

thread_info ThreadRecord::Info() const
{
    std::lock_guard lock(fMutex);
    const bool isStopped = !fIsStarted || (fIsSuspended && fState != B_THREAD_RUNNING);
    return {fId, fName, isStopped ? B_THREAD_SUSPENDED : fState, fPriority};
}

status_t ThreadRecord::Resume()
{
    std::lock_guard lock(fMutex);
    if (fIsStarted && !fIsSuspended)
        return B_BAD_THREAD_STATE;
    fIsStarted = true;
    fIsSuspended = false;
    fIsAsked = fIsKilled;
    LeaveSuspension();
    fChanged.notify_all();
    return B_OK;
}

void ThreadRecord::Suspend()
{
    std::lock_guard lock(fMutex);
    if (!fIsStarted)
        return;
    fIsSuspended = true;
    fIsAsked = true;
    fChanged.notify_all();
}

void ThreadRecord::Kill()
{
    std::lock_guard lock(fMutex);
    fIsKilled = true;
    fIsSuspended = false;
    fIsAsked = true;
    LeaveSuspension();
    fChanged.notify_all();
}

void ThreadRecord::LeaveSuspension()
{
    if (fState == B_THREAD_SUSPENDED)
        fState = B_THREAD_RUNNING;
}

void ThreadRecord::Wake(bool* woken)
{
    std::lock_guard lock(fMutex);
    *woken = true;
    fChanged.notify_all();
}

bool ThreadRecord::CanBeKilledNow() const
{
    return fCountShields == 0 && std::uncaught_exceptions() == 0;
}

bool ThreadRecord::HasToStop() const
{
    if (!fIsAsked)
        return false;
    std::lock_guard lock(fMutex);
    return fIsSuspended || (fIsKilled && CanBeKilledNow());
}

void ThreadRecord::StopIfAsked(WaitPoint::Guard* guard)
{
    if (!HasToStop())
        return;
    if (guard != nullptr)
        guard->unlock();
    {
        std::unique_lock lock(fMutex);
        if (fIsSuspended)
            fState = B_THREAD_SUSPENDED;
        fChanged.wait(lock, [this] { return !fIsSuspended; });
        if (fIsKilled && CanBeKilledNow()) {
            lock.unlock();
            throw ThreadKilled();
        }
    }
    if (guard != nullptr)
        guard->lock();
}

bool ThreadRecord::Sleep(const bool& woken, Deadline deadline, thread_state state)
{
    const bool isKillable = CanBeKilledNow();
    const auto isOver = [&] { return woken || fIsSuspended || (fIsKilled && isKillable); };
    std::unique_lock lock(fMutex);
    fState = state;
    bool isInTime = true;
    if (deadline == kNoDeadline)
        fChanged.wait(lock, isOver);
    else
        isInTime = fChanged.wait_until(lock, deadline, isOver);
    // A thread that is being suspended does not count as running either, before it stops.
    fState = fIsSuspended ? B_THREAD_SUSPENDED : B_THREAD_RUNNING;
    return isInTime;
}

void ThreadRecord::Snooze(bigtime_t microseconds)
{
    const Deadline deadline = DeadlineIn(microseconds);
    const bool isNeverWoken = false;
    do {
        StopIfAsked(nullptr);
    } while (Sleep(isNeverWoken, deadline, B_THREAD_ASLEEP));
}

} // namespace kits
