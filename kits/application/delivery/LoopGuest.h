// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/delivery/WakeSet.h"

#include <atomic>

namespace kits {

/// Has descriptors that the main thread reads itself, while it runs its loop (see WakeSet). The main thread calls it,
/// with the interface lock held unless stated otherwise.
class LoopGuest {
public:
    virtual ~LoopGuest() = default;

    /// Makes the main thread's loop serve this guest from now on. Any thread; the guest must stay, and there is only
    /// one.
    static void Set(LoopGuest* guest) { sGuest = guest; }
    /// Returns the guest, or null.
    static LoopGuest* Get() { return sGuest; }

    /// The main thread is about to wait: descriptors in the WakeSet are read as soon as they can be.
    virtual void MainWaits() = 0;
    /// The main thread has stopped waiting and has work to do; it may be long before it waits again. Called without the
    /// lock.
    virtual void MainWorks() = 0;
    /// This descriptor can be read. Messages posted here are dispatched in the turn that begins now.
    virtual void Read(WakeSet::Number number) = 0;

private:
    static inline std::atomic<LoopGuest*> sGuest = nullptr;
};

} // namespace kits
