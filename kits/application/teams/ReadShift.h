// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"

#include <atomic>
#include <chrono>

namespace kits {

/// Decides which thread reads what other teams send: the main thread as long as its loop runs, otherwise the port's
/// thread. What the main thread reads reaches its handler at once; through the port's thread, each message would wake
/// two threads. But if the main thread is held up, or runs no loop, the port's thread takes over, because other threads
/// wait for answers. One thread reads at a time.
class ReadShift {
public:
    /// A main thread that works for this long without waiting in its loop is held up.
    static constexpr auto kLongestWork = std::chrono::milliseconds(20);

    ReadShift();

    /// Initially false. Any thread.
    bool IsMains() const { return fIsMains; }

    /// The main thread waits in its loop, and gets the shift.
    /// @return whether it did not have the shift before
    bool MainWaits();
    /// The main thread has stopped waiting.
    void MainWorks();
    /// Readable when the main thread may have worked for too long.
    int Descriptor() const { return fTimer.Get(); }
    /// Call it when the descriptor is readable: ends the main thread's shift if it still works.
    void Check();
    /// There is nothing to read: the port's thread gets the shift.
    void End() { fIsMains = false; }

private:
    void SetTimer(std::chrono::nanoseconds time);

    const FileDescriptor fTimer;
    std::atomic<bool> fIsMains = false; ///< any thread may read it
    bool fIsMainWaiting = false;        ///< valid as long as it has the shift
};

} // namespace kits
