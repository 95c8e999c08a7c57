// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

class ThreadRecord;

/// A lock that is released when the thread that holds it ends, killed or not. A lock class derives from it, calls
/// `NoteHeld` when a thread takes the lock for the first time and `NoteReleased` when the thread gives it up
/// completely. Both are called on the holding thread and cost a few nanoseconds. Works for every thread, including
/// those that the kit has not made.
class HeldLock {
public:
    HeldLock() = default;
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

    /// The calling thread holds the lock from now on. Once per holding, not per nesting.
    void NoteHeld();
    /// The calling thread no longer holds the lock. Call it before another thread can take the lock.
    void NoteReleased() noexcept;

    /// Gives the lock up completely, however often it was taken; must not wait.
    /// Called on a thread that ends with the lock held, after its stack is unwound and NoteReleased has been called;
    /// the newest lock first.
    virtual void ReleaseWhole() noexcept = 0;

protected:
    virtual ~HeldLock() = default;

private:
    friend class ThreadRecord;
    HeldLock* fOlder = nullptr;
    HeldLock* fNewer = nullptr;
    ThreadRecord* fHolder = nullptr;
};

} // namespace kits
