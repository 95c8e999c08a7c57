// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Locker.h"

/// Holds a BLocker as long as it lives. On one thread.
///
///     BAutolock lock(fLock);
class BAutolock {
public:
    /// @param lock  not owned, has to outlive this; null holds nothing
    explicit BAutolock(BLocker* lock)
        : fLock(lock)
        , fIsLocked(lock != nullptr && lock->Lock())
    {
    }
    explicit BAutolock(BLocker& lock)
        : BAutolock(&lock)
    {
    }
    ~BAutolock() { Unlock(); }
    BAutolock(const BAutolock&) = delete;
    BAutolock& operator=(const BAutolock&) = delete;

    /// Gives it up before the end; the destructor then does nothing.
    void Unlock()
    {
        if (fIsLocked) {
            fIsLocked = false;
            fLock->Unlock();
        }
    }
    [[nodiscard]] bool IsLocked() const { return fIsLocked; }

private:
    BLocker* fLock;
    bool fIsLocked;
};
