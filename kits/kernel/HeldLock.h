// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

class ThreadRecord;

/// A lock that tells its thread that it is held, so that it is released when that thread ends with it held, killed
/// or not. A lock class derives from it, calls `NoteHeld` when a thread gets it for the first time and `NoteReleased`
/// when it gives it up whole. Both are calls on the holding thread and cost a few nanoseconds. Works for every
/// thread, also those that the kit has not made.
class HeldLock {
public:
    HeldLock() = default;
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

    /// The lock is held by the calling thread from now on. Once per holding, not per nesting.
    void NoteHeld();
    /// The calling thread, which noted it, holds it no more. Has to come before the lock can be taken by another.
    void NoteReleased() noexcept;

    /// Called on a thread that is about to end and still holds the lock, after its stack is unwound; the newest
    /// held lock first. Has to give it up whole, however often it was taken, and must not wait. NoteReleased was
    /// called for it already.
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
