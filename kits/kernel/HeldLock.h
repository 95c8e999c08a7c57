#pragma once

namespace kits {

/// A lock that tells its thread that it is held, so that it is released when that thread ends with it held, killed
/// or not. A lock class derives from it, calls `NoteHeld` when a thread gets it for the first time and `NoteReleased`
/// when it gives it up whole. Both are calls on the holding thread, without a lock of their own, and cost a few
/// nanoseconds. Works for every thread, also those that the kit has not made.
class HeldLock {
public:
    /// The lock is held by the calling thread from now on. Once per holding, not per nesting.
    void NoteHeld();
    /// The calling thread holds it no more. Nothing happens if it was not noted.
    void NoteReleased() noexcept;

    /// Called on a thread that is about to end and still holds the lock, after its stack is unwound; the newest
    /// held lock first. Has to give it up whole, however often it was taken, and must not wait.
    virtual void ReleaseWhole() noexcept = 0;

protected:
    ~HeldLock() = default;
};

} // namespace kits
