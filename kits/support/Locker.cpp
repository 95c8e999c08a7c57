// SPDX-License-Identifier: MIT
#include "kits/support/Locker.h"

BLocker::BLocker(const char* name)
    : fName(name != nullptr ? name : "some BLocker")
{
}

BLocker::~BLocker()
{
    if (IsLocked())
        NoteReleased();
}

status_t BLocker::LockWithTimeout(bigtime_t timeout)
{
    const thread_id self = find_thread(nullptr);
    kits::WaitPoint::Guard guard = fWaitPoint.Hold();
    const status_t status = fWaitPoint.Wait(
        guard, [&] { return fHolder < 0 || fHolder == self; }, timeout);
    if (status == B_OK && fDepth++ == 0) {
        fHolder = self;
        NoteHeld();
    }
    return status;
}

void BLocker::Unlock()
{
    kits::WaitPoint::Guard guard = fWaitPoint.Hold();
    if (fHolder != find_thread(nullptr) || --fDepth > 0)
        return;
    NoteReleased();
    fHolder = -1;
    fWaitPoint.WakeOne(guard);
}

bool BLocker::IsLocked() const
{
    kits::WaitPoint::Guard guard = fWaitPoint.Hold();
    return fHolder == find_thread(nullptr);
}

void BLocker::ReleaseWhole() noexcept
{
    kits::WaitPoint::Guard guard = fWaitPoint.Hold();
    fDepth = 0;
    fHolder = -1;
    fWaitPoint.WakeOne(guard);
}
