// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Threads.h"

namespace kits {

/// The loop of the main thread: waits for work and does it. There are two forms: PollEventLoop for programs
/// without a screen, and the interface kit's around the loop of its toolkit. Loopers behave the same in
/// both.
///
/// The process keeps all work (messages, timers, actions for the main thread) in one place. A loop waits until
/// WakeDescriptor() can be read or Deadline() is reached, whichever comes first, and then calls RunDue(). A MainWait
/// releases the interface lock during the wait; while the loop runs anything, it holds the lock as deep as before. A
/// nested loop does the same, so loopers continue to work under menus and alerts; the code that runs it keeps a
/// NestedLoop on the stack.
class EventLoop {
public:
    virtual ~EventLoop() = default;

    /// Returns the loop of this process: a PollEventLoop, unless another one was installed.
    static EventLoop& Current();
    /// Installs a loop, not owned; null restores the PollEventLoop. Main thread, while no loop runs.
    static void SetCurrent(EventLoop* loop);

    /// Runs the loop until Quit. May be called again from inside; such a Run keeps a NestedLoop of its own. Main
    /// thread.
    virtual void Run() = 0;
    /// Ends the innermost Run after the current event; does nothing if no Run is under way. Main thread.
    virtual void Quit() = 0;

    /// Readable while there is work. The same descriptor for the whole life of the process: watch it, never read or
    /// close it.
    static int WakeDescriptor();
    /// Makes WakeDescriptor() readable. Any thread; safe in signal handlers.
    static void Wake();
    /// The time (of `system_time`) of the next timer; B_INFINITE_TIMEOUT if none runs. Read it again after every
    /// RunDue.
    static bigtime_t Deadline();
    /// Does everything due: runs timers and actions, and dispatches the messages that wait now, one after the other, in
    /// the order in which they were posted. Dispatches messages of another process for a limited time (PeerTurns).
    /// Skipped messages and new ones wait for the next call, so that input and painting get their turn;
    /// WakeDescriptor() stays readable. Main thread, with the interface lock held.
    static void RunDue();
    /// Does the same if nothing is due except messages of which only the newest counts (BMessage::SetNewestWins).
    /// Otherwise it does nothing, and WakeDescriptor() stays readable.
    /// @return true if it did the work
    static bool RunIfOnlyStreams();

    /// Called for everything that a loop hands to the program. Counts it if the interface lock is not held.
    static void NoteEvent();
    /// The number of events and messages handled without the lock so far. Must stay 0, which tests check.
    static uint64 CountUnlockedEvents();
    /// Called for every event that a toolkit delivers on another thread than the main one.
    static void NoteEventElsewhere();
    /// The number of these so far. The program's own threads cause none, which a test checks; the toolkit's threads
    /// may.
    static uint64 CountEventsElsewhere();
};

} // namespace kits
