// SPDX-License-Identifier: MIT
#include "kits/application/InterfaceLock.h"

#include "kits/kernel/Errors.h"

#include <algorithm>

namespace kits {

InterfaceLock& InterfaceLock::Get()
{
    // Never destroyed: threads may hold it while the process ends.
    static InterfaceLock& lock = *new InterfaceLock;
    return lock;
}

status_t InterfaceLock::Acquire(int32 depth, bigtime_t timeout)
{
    const thread_id self = find_thread(nullptr);
    WaitPoint::Guard guard = fPoint.Hold();
    if (fHolder == self) {
        fDepth += depth;
        return B_OK;
    }

    // The lock is free, but a waiting thread is on its way to it. Without this pause the main thread would take the
    // lock back before that thread has begun to run, again and again. The thread may have been suspended on the way, so
    // this is no guarantee.
    constexpr bigtime_t kCourtesy = 1000;
    bigtime_t left = timeout;
    if (fHolder < 0 && fIsHandedOn && timeout > 0) {
        const uint64 count = fCountAcquired;
        const bigtime_t longest = std::min(timeout, kCourtesy);
        const status_t status = fPoint.Wait(
            guard, [this, count] { return fHolder < 0 && fCountAcquired != count; }, longest);
        if (status != B_OK && timeout != B_INFINITE_TIMEOUT)
            left -= longest;
    }
    const status_t status = fPoint.Wait(
        guard, [this] { return fHolder < 0; }, left);
    if (status != B_OK)
        return timeout > 0 ? B_TIMED_OUT : status;
    fHolder = self;
    fDepth = depth;
    fIsHandedOn = false;
    ++fCountAcquired;
    NoteHeld();
    return B_OK;
}

void InterfaceLock::Unlock()
{
    const thread_id self = find_thread(nullptr);
    WaitPoint::Guard guard = fPoint.Hold();
    if (fHolder == self && --fDepth == 0)
        Release(guard);
}

void InterfaceLock::Release(const WaitPoint::Guard& guard)
{
    NoteReleased();
    PassOn(guard);
}

void InterfaceLock::PassOn(const WaitPoint::Guard& guard)
{
    fHolder = -1;
    fDepth = 0;
    fIsHandedOn = fPoint.HasWaiters(guard);
    fPoint.WakeOne(guard);
}

int32 InterfaceLock::Depth() const
{
    const thread_id self = find_thread(nullptr);
    const WaitPoint::Guard guard = fPoint.Hold();
    return fHolder == self ? fDepth : 0;
}

int32 InterfaceLock::ReleaseAll()
{
    const thread_id self = find_thread(nullptr);
    WaitPoint::Guard guard = fPoint.Hold();
    if (fHolder != self)
        return 0;
    const int32 depth = fDepth;
    Release(guard);
    return depth;
}

void InterfaceLock::Restore(int32 depth)
{
    const int32 had = Depth();
    if (depth <= 0) {
        ReleaseAll();
    } else if (had == 0) {
        Acquire(depth, B_INFINITE_TIMEOUT);
    } else {
        const WaitPoint::Guard guard = fPoint.Hold();
        fDepth = depth;
    }
}

void InterfaceLock::ReleaseWhole() noexcept
{
    const WaitPoint::Guard guard = fPoint.Hold();
    PassOn(guard);
}

} // namespace kits
