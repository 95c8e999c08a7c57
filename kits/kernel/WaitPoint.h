// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Threads.h"

#include <memory>
#include <mutex>
#include <type_traits>

namespace kits {

class ThreadRecord;

/// Unwinds the stack of a thread that is killed in a wait. Only the kit throws it, only on a thread made by
/// `spawn_thread`, and only that thread's entry catches it: code in between lets it pass. It derives from nothing, so
/// that no handler of another error catches it; code that must catch everything (`catch (...)`) has to rethrow it.
///
/// An exception of our own is used instead of the thread library's cancellation. Cancellation unwinds by force, which
/// ends the process at the first function of the standard library that must not throw (its condition variables among
/// them); it is a state of the thread that a forgotten switch leaves on; and the sanitizers do not understand it. The
/// exception is thrown at one place, in our own frame, with no lock of the wait held.
struct ThreadKilled {};

/// A point at which threads wait for a condition: a mutex, and the waiting threads in the order of arrival. Everything
/// in the kits that may block for long is built on it, because a thread can be killed and suspended here and nowhere
/// else. The state in the condition belongs to the owner of the point and is guarded by `Hold`.
///
///     kits::WaitPoint::Guard guard = fPoint.Hold();
///     status_t status = fPoint.Wait(guard, [this] { return !fQueue.empty(); }, timeout);
///     if (status == B_OK)
///         ... // the condition holds, the guard is held
///
/// A killed thread leaves `Wait` by ThreadKilled, with the guard released. So a function that waits cleans up in
/// destructors, and a destructor (or anything else that must not throw) that may wait does so under a KillShield. While
/// an exception is in flight, no wait throws.
///
/// A mutex of another kind may be held across a wait only if unwinding releases it. Must outlive every wait in it. Any
/// thread.
class WaitPoint {
public:
    using Guard = std::unique_lock<std::mutex>;

    /// @param whileWaiting  the state that `get_thread_info` reports for a thread that waits here
    explicit WaitPoint(thread_state whileWaiting = B_THREAD_WAITING)
        : fWhileWaiting(whileWaiting)
    {
    }
    ~WaitPoint() = default;
    WaitPoint(const WaitPoint&) = delete;
    WaitPoint& operator=(const WaitPoint&) = delete;

    /// Locks the guard of the state. Hold it only briefly, never across another wait.
    [[nodiscard]] Guard Hold() { return Guard(fMutex); }

    /// Waits until `ready()` is true. It is called with the guard held, the first time before any waiting, and must not
    /// throw. A killed thread ends here even if it is true, so a loop around a wait can always be ended.
    /// @param guard    from `Hold` of this point; held again on return
    /// @param timeout  microseconds of the monotonic clock; 0 or less does not wait
    /// @return `B_OK`, `B_TIMED_OUT`, or `B_WOULD_BLOCK` with a time-out of 0 or less
    template <class Ready> status_t Wait(Guard& guard, Ready&& ready, bigtime_t timeout = B_INFINITE_TIMEOUT)
    {
        return WaitFor(
            guard, [](void* closure) -> bool { return (*static_cast<std::remove_reference_t<Ready>*>(closure))(); },
            const_cast<void*>(static_cast<const void*>(std::addressof(ready))), timeout);
    }

    /// Wakes the thread that has waited longest, which checks again whether it is ready. If it is killed or suspended,
    /// the next one is woken in its place. Call it with the guard of this point held.
    void WakeOne(const Guard& guard);
    /// Wakes all. Call it with the guard of this point held.
    void WakeAll(const Guard& guard);
    /// Returns true if a thread waits here. Call it with the guard of this point held.
    [[nodiscard]] bool HasWaiters(const Guard&) const { return fFirst != nullptr; }

private:
    friend class ThreadRecord;
    struct Waiter;

    status_t WaitFor(Guard& guard, bool (*ready)(void*), void* closure, bigtime_t timeout);
    void Append(Waiter* waiter);
    void Remove(Waiter* waiter);

    std::mutex fMutex;
    Waiter* fFirst = nullptr; ///< on the stacks of the waiting threads
    Waiter* fLast = nullptr;
    const thread_state fWhileWaiting;
};

/// While one lives on a thread, the thread's waits do not end by ThreadKilled: the thread is killed at the first wait
/// after it. For destructors and callbacks that must not throw. Suspending still works. May be nested.
class KillShield {
public:
    KillShield();
    ~KillShield();
    KillShield(const KillShield&) = delete;
    KillShield& operator=(const KillShield&) = delete;
};

} // namespace kits
