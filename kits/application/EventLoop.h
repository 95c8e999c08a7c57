// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Threads.h"

namespace kits {

/// The loop of the main thread: waits for something to do and has it done. There are two forms, PollEventLoop for
/// programs without a screen and one of the interface kit around its toolkit's loop; which one runs makes no difference
/// to loopers.
///
/// What there is to do (messages, timers, actions for the main thread) is kept in one place for the process. A loop
/// waits until WakeDescriptor() can be read or Deadline() is reached, whichever comes first, and then calls RunDue().
/// For as long as it waits a MainWait is under way, with the interface lock released; the lock is held, as deep as
/// before, while it runs anything. A loop that is run inside another one does the same, so loopers work on under
/// menus and alerts; whoever runs one keeps a NestedLoop on the stack.
class EventLoop {
public:
    virtual ~EventLoop() = default;

    /// The loop of this process: a PollEventLoop, unless another was installed.
    static EventLoop& Current();
    /// Installs a loop; null puts the PollEventLoop back. Not owned. Main thread, while no loop runs.
    static void SetCurrent(EventLoop* loop);

    /// Runs the loop until Quit. May be called again from inside; such a Run keeps a NestedLoop of its own. Main
    /// thread.
    virtual void Run() = 0;
    /// Ends the innermost Run that is under way, after what is being handled now; nothing if none is. Main thread.
    virtual void Quit() = 0;

    /// Readable while there is something to do. One for the whole life of the process: watch it, never read it or close
    /// it.
    static int WakeDescriptor();
    /// Makes WakeDescriptor() readable. Any thread; safe in signal handlers.
    static void Wake();
    /// The moment (of `system_time`) of the next timer; B_INFINITE_TIMEOUT if none runs. Ask again after every RunDue.
    static bigtime_t Deadline();
    /// Does what is due: runs timers and actions, and dispatches the messages that wait now, one after the other in the
    /// order of posting. Messages of another process are dispatched for a limited time (PeerTurns). Skipped messages
    /// and new ones wait for the next call, so that input and painting have their turn; WakeDescriptor() stays
    /// readable. Main thread, with the interface lock held.
    static void RunDue();
    /// The same if nothing is due but messages of which only the newest counts (BMessage::SetNewestWins); else nothing,
    /// and WakeDescriptor() stays readable.
    /// @return whether it was done
    static bool RunIfOnlyStreams();

    /// To be called for whatever a loop hands to the program: counts it if the interface lock is not held.
    static void NoteEvent();
    /// How many events and messages were handled without the lock so far. Has to stay 0.
    static uint64 CountUnlockedEvents();
    /// To be called for every event that a toolkit delivers on a thread other than the main one.
    static void NoteEventElsewhere();
    /// The number of these so far. What the program does on its threads delivers none, so a test sees this stay as it
    /// is; the toolkit's own threads may.
    static uint64 CountEventsElsewhere();

    /// Moves whenever something was handled that may have changed anything: each event of the toolkit, message, timer
    /// and action counts when it is over, and another thread counts when it takes the interface lock. For who looks
    /// again and again whether there is something to save. Under something that is still being handled, as in the loop
    /// of a menu, it moves with every call, since nobody knows what that has done so far; what calls it is not meant.
    /// Main thread.
    static uint64 CountChanges();
    /// Says of what is being handled now, apart from what is handled inside it, that it changes nothing that is kept:
    /// it is not counted. To be said by its handler alone. Main thread.
    static void NoteUnchanged();
};

/// While one is there, what its thread posts wakes the loop only once, when the last one goes. For who posts to many at
/// once: the main thread then has it all in one turn, and is not awake already while it is still being posted. Short,
/// and never around a wait for an answer.
class WakeOnce {
public:
    WakeOnce();
    ~WakeOnce();
    WakeOnce(const WakeOnce&) = delete;
    WakeOnce& operator=(const WakeOnce&) = delete;
};

} // namespace kits
