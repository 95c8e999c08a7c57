// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"

#include <atomic>
#include <chrono>

namespace kits {

/// Which thread reads what other teams send: the main thread while it comes by in its loop, else the thread of the
/// port. What wakes the main thread itself is with its handler at once; by way of the port's thread each message would
/// wake two. But the main thread may be held up, or run no loop, and then the port's takes over: others wait for
/// answers. One thread at a time.
class ReadShift {
public:
    /// A main thread that works for so long without waiting in its loop is held up.
    static constexpr auto kLongestWork = std::chrono::milliseconds(20);

    ReadShift();

    /// At first it is not. Any thread.
    bool IsMains() const { return fIsMains; }

    /// The main thread waits in its loop: it has the shift.
    /// @return whether it had it not before
    bool MainWaits();
    /// The main thread has stopped waiting.
    void MainWorks();
    /// Readable when the main thread may have worked for too long.
    int Descriptor() const { return fTimer.Get(); }
    /// For when it is readable: ends the main thread's shift if it still works.
    void Check();
    /// There is nothing to read: the port's thread has the shift.
    void End() { fIsMains = false; }

private:
    void SetTimer(std::chrono::nanoseconds time);

    const FileDescriptor fTimer;
    std::atomic<bool> fIsMains = false; ///< any thread may read it
    bool fIsMainWaiting = false;        ///< as long as it has the shift
};

} // namespace kits
