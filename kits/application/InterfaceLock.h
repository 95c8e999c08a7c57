// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"
#include "kits/kernel/HeldLock.h"
#include "kits/kernel/WaitPoint.h"

namespace kits {

/// The one lock over all loopers, windows and views. BLooper::Lock and BView::LockLooper take it; everything that
/// destroys such an object holds it.
///
/// The main thread holds it while it runs code, and releases it completely while it waits in its event loop: a loop
/// calls ReleaseAll() when it is about to block, and Restore() before it handles anything. So while another thread
/// holds the lock, no object that it guards is destroyed or changed by others. Keep it short: the screen stands still
/// meanwhile.
///
/// Recursive. Waiting threads get it in their order of arrival, so no thread starves another; suspended threads are
/// passed over. A thread that waits for it can be killed; a thread that ends releases it. Order of locks: interface,
/// sampler, bitmap.
class InterfaceLock : public HeldLock {
public:
    /// Returns the only one.
    static InterfaceLock& Get();

    /// @param timeout  microseconds; 0 or less does not wait
    /// @return `B_OK`, `B_TIMED_OUT`, or `B_WOULD_BLOCK` with a time-out of 0 or less
    status_t Lock(bigtime_t timeout = B_INFINITE_TIMEOUT) { return Acquire(1, timeout); }
    /// Locks it for an object that may go while the thread waits.
    /// @param exists  called with the lock held: true if the object still exists
    /// @return as Lock; `B_BAD_HANDLER`, and the lock is released, if it does not exist
    template <class Exists> status_t LockIf(const Exists& exists, bigtime_t timeout)
    {
        const status_t status = Lock(timeout);
        if (status != B_OK || exists())
            return status;
        Unlock();
        return B_BAD_HANDLER;
    }
    /// Undoes one Lock(). Does nothing if the calling thread does not hold it.
    void Unlock();
    /// True if the calling thread holds it.
    bool IsHeld() const { return Depth() > 0; }
    /// How often the calling thread has locked it; 0 if it does not hold it.
    int32 Depth() const;

    /// Releases it completely. @return how often the calling thread had locked it
    int32 ReleaseAll();
    /// Makes the calling thread hold it exactly `depth` times, and waits without limit for it; 0 releases it.
    void Restore(int32 depth);

    void ReleaseWhole() noexcept override;

private:
    InterfaceLock() = default;
    status_t Acquire(int32 depth, bigtime_t timeout);
    void Release(const WaitPoint::Guard& guard);
    void PassOn(const WaitPoint::Guard& guard);

    mutable WaitPoint fPoint;
    thread_id fHolder = -1; ///< guarded by fPoint, as the members below
    int32 fDepth = 0;
    bool fIsHandedOn = false; ///< a waiting thread was woken to take it
    uint64 fCountAcquired = 0;
};

/// Holds the interface lock for the life of the object.
class InterfaceLocker {
public:
    InterfaceLocker() { InterfaceLock::Get().Lock(); }
    ~InterfaceLocker() { InterfaceLock::Get().Unlock(); }
    InterfaceLocker(const InterfaceLocker&) = delete;
    InterfaceLocker& operator=(const InterfaceLocker&) = delete;
};

} // namespace kits
