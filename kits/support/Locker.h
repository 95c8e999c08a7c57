// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/HeldLock.h"
#include "kits/kernel/WaitPoint.h"
#include "kits/support/SupportDefs.h"

#include <string>

/// A recursive lock: it is free when it was released as often as it was taken.
///
/// Taking it is a wait in the sense of kits/kernel/Threads.h: a thread can be killed and suspended there, even if the
/// lock is free. If the holder ends, by being killed or by returning, it is released. Waiting threads get it in the
/// order of arrival, but a thread that arrives while it is free may be faster. Any thread. When it is destroyed, no
/// other thread may hold it or wait for it; the destroying thread itself may hold it.
class BLocker : private kits::HeldLock {
public:
    /// @param name  helps to find a deadlock; copied, null counts as "some BLocker"
    explicit BLocker(const char* name = nullptr);
    virtual ~BLocker();
    BLocker(const BLocker&) = delete;
    BLocker& operator=(const BLocker&) = delete;

    /// Takes the lock, however long that takes. Always returns true: a thread that is killed does not return from here.
    bool Lock() { return LockWithTimeout(B_INFINITE_TIMEOUT) == B_OK; }
    /// @param timeout  microseconds; 0 or less only tries
    /// @return `B_OK`, `B_TIMED_OUT`, or `B_WOULD_BLOCK` for a time-out of 0 or less
    status_t LockWithTimeout(bigtime_t timeout);
    /// Releases it once. Does nothing on a thread that does not hold it.
    void Unlock();

    /// True if the calling thread holds it.
    [[nodiscard]] bool IsLocked() const;
    [[nodiscard]] const char* Name() const { return fName.c_str(); }

private:
    void ReleaseWhole() noexcept override;

    const std::string fName;
    mutable kits::WaitPoint fWaitPoint; ///< guards the two members below
    thread_id fHolder = -1;
    int32 fDepth = 0;
};
