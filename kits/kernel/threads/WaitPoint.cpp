// SPDX-License-Identifier: MIT
#include "kits/kernel/WaitPoint.h"

#include "kits/kernel/Errors.h"
#include "kits/kernel/threads/ThreadRecord.h"

namespace kits {

/// A thread that waits, on its own stack.
struct WaitPoint::Waiter {
    ThreadRecord* thread;
    Waiter* previous = nullptr;
    Waiter* next = nullptr;
    bool isListed = false; ///< guarded by the point
    bool isWoken = false;  ///< guarded by the thread's record
};

void WaitPoint::Append(Waiter* waiter)
{
    waiter->previous = fLast;
    (fLast != nullptr ? fLast->next : fFirst) = waiter;
    fLast = waiter;
    waiter->isListed = true;
}

void WaitPoint::Remove(Waiter* waiter)
{
    (waiter->previous != nullptr ? waiter->previous->next : fFirst) = waiter->next;
    (waiter->next != nullptr ? waiter->next->previous : fLast) = waiter->previous;
    waiter->isListed = false;
}

void WaitPoint::WakeOne(const Guard&)
{
    if (fFirst == nullptr)
        return;
    Waiter* waiter = fFirst;
    Remove(waiter);
    waiter->thread->Wake(&waiter->isWoken);
}

void WaitPoint::WakeAll(const Guard& guard)
{
    while (fFirst != nullptr)
        WakeOne(guard);
}

status_t WaitPoint::WaitFor(Guard& guard, bool (*ready)(void*), void* closure, bigtime_t timeout)
{
    ThreadRecord& self = ThreadRecord::Current();
    ThreadRecord::Deadline deadline{};
    bool isFirstRound = true;
    bool isTimeLeft = true;
    while (true) {
        self.StopIfAsked(&guard);
        if (ready(closure))
            return B_OK;
        if (timeout <= 0)
            return B_WOULD_BLOCK;
        if (!isTimeLeft)
            return B_TIMED_OUT;
        if (isFirstRound) {
            deadline = ThreadRecord::DeadlineIn(timeout);
            isFirstRound = false;
        }

        Waiter waiter{&self};
        Append(&waiter);
        guard.unlock();
        isTimeLeft = self.Sleep(waiter.isWoken, deadline, fWhileWaiting);
        guard.lock();
        if (waiter.isListed)
            Remove(&waiter);
        else if (self.HasToStop())
            WakeOne(guard); // another waiter that can continue takes over this wake
    }
}

KillShield::KillShield()
{
    ++ThreadRecord::Current().fCountShields;
}

KillShield::~KillShield()
{
    --ThreadRecord::Current().fCountShields;
}

} // namespace kits
