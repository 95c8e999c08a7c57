// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/delivery/WakeSet.h"

namespace kits {

/// Somebody whose descriptors the main thread reads itself, while it runs its loop (see WakeSet). Called by the main
/// thread, with the interface lock held but where it says more.
class LoopGuest {
public:
    virtual ~LoopGuest() = default;

    /// Lets the main thread's loop serve this one, from now on. Any thread; must stay, and there is one only.
    static void Set(LoopGuest* guest);
    /// Null if there is none.
    static LoopGuest* Get();

    /// The main thread will wait: whatever was added to the WakeSet is read as soon as it can be.
    virtual void MainWaits() = 0;
    /// The main thread has waited, and has something to do; it may be long before it waits again. Without the lock.
    virtual void MainWorks() = 0;
    /// This one can be read. What is posted in here is dispatched in the turn that begins now.
    virtual void Read(WakeSet::Number number) = 0;
};

} // namespace kits
