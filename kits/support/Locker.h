// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/HeldLock.h"
#include "kits/kernel/WaitPoint.h"
#include "kits/support/SupportDefs.h"

#include <string>

/// A lock that its holder may take again: it is free when it was given up as often as it was taken.
///
/// Taking it is a wait in the sense of kits/kernel/Threads.h: a thread can be killed and suspended there, also when
/// the lock is free. If the holder ends, by being killed or by returning, it is released. Waiting threads get it in
/// the order of their coming, but a thread that comes while it is free may be faster. Any thread.
/// Nobody may hold it or wait for it when it is destroyed, except the destroying thread itself, which may hold it.
class BLocker : private kits::HeldLock {
public:
    /// @param name  for people who look for a deadlock; copied, null counts as "some BLocker"
    explicit BLocker(const char* name = nullptr);
    virtual ~BLocker();
    BLocker(const BLocker&) = delete;
    BLocker& operator=(const BLocker&) = delete;

    /// Takes the lock, however long that takes. True, always: a thread that is killed does not return from here.
    bool Lock();
    /// @param timeout  microseconds; 0 or less only tries
    /// @return `B_OK`, `B_TIMED_OUT`, or `B_WOULD_BLOCK` for a time-out of 0 or less
    status_t LockWithTimeout(bigtime_t timeout);
    /// Gives it up once. Does nothing on a thread that does not hold it.
    void Unlock();

    /// True if the calling thread holds it.
    [[nodiscard]] bool IsLocked() const;
    /// Who holds it, negative if nobody does. Of another thread's holding this may be out of date when it is read.
    [[nodiscard]] thread_id LockingThread() const;
    [[nodiscard]] const char* Name() const { return fName.c_str(); }

private:
    void ReleaseWhole() noexcept override;

    const std::string fName;
    mutable kits::WaitPoint fWaitPoint; ///< guards the two below
    thread_id fHolder = -1;
    int32 fDepth = 0;
};
