// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Handler.h"

#include <memory>
#include <vector>

/// A handler with a queue of messages for itself and for the handlers that were added to it.
///
/// Loopers have no threads. The main thread takes the messages of all of them in the order in which they were posted,
/// one at a time, even while a nested loop runs. So two loopers never run at once, and a handler has to be quick.
///
/// Any thread may post: posting never waits and takes no lock that is held for long. At most kQueueCapacity messages
/// wait for a looper; a further one is refused.
///
/// Lock() takes the one interface lock, which all loopers share; the main thread holds it whenever it runs code.
/// Another thread must lock a looper before it uses the looper, its handlers or its window.
class BLooper : public BHandler {
public:
    static constexpr int32 kQueueCapacity = 4096;

    /// @param name  copied; may be null
    explicit BLooper(const char* name = nullptr);
    /// Its handlers stay, without a looper. Loopers that have run are ended with Quit(), not deleted.
    ~BLooper() override;

    /// Begins to handle messages, including those posted before. Returns at once (but see BApplication).
    /// @return the main thread's id
    virtual thread_id Run();
    /// Ends and deletes the looper, which must have been made with `new`. From now on its tokens are invalid for
    /// everybody and its messages dropped. It is destroyed at once if possible; if a message is being dispatched or a
    /// nested loop runs, when the outermost loop is reached again (menus and alerts are closed for that); on another
    /// thread than the main one, by the main thread. Call it with the looper locked; do not use the looper afterwards,
    /// except to unlock it.
    virtual void Quit();
    /// Called when B_QUIT_REQUESTED arrives: true lets the looper quit.
    virtual bool QuitRequested();

    /// Queues a copy of the message for the looper or for one of its handlers (null: the looper itself).
    /// @param replyTo  gets the replies; null: nobody
    /// @return `B_WOULD_BLOCK` if the queue is full, `B_BAD_HANDLER` if the looper is ending, `B_MISMATCHED_VALUES` if
    ///         the handler is not one of this looper's, `B_BAD_VALUE` for a null message
    status_t PostMessage(uint32 code, BHandler* handler = nullptr, BHandler* replyTo = nullptr);
    status_t PostMessage(const BMessage* message, BHandler* handler = nullptr, BHandler* replyTo = nullptr);

    /// Passes a message to a handler of this looper. Handles B_QUIT_REQUESTED to the looper itself by QuitRequested().
    virtual void DispatchMessage(BMessage* message, BHandler* handler);
    /// The message of the innermost dispatch, or null.
    BMessage* CurrentMessage() const;
    /// Returns the number of waiting messages.
    int32 CountMessages() const;

    /// Adds a handler that belongs to no looper yet (otherwise it stays where it is). Not owned. Looper locked.
    void AddHandler(BHandler* handler);
    /// @return false if the handler is not one of this looper's
    bool RemoveHandler(BHandler* handler);
    int32 CountHandlers() const { return static_cast<int32>(fHandlers.size()); }

    /// Takes the interface lock. The looper must exist at the call; if it may be gone, use BMessenger::LockTarget.
    /// True: it still exists and is locked. Every true needs its Unlock().
    bool Lock() { return LockWithTimeout(B_INFINITE_TIMEOUT) == B_OK; }
    /// @param timeout  microseconds; 0 or less does not wait
    /// @return `B_TIMED_OUT`, `B_WOULD_BLOCK`, `B_BAD_HANDLER` if the looper has gone or is ending
    status_t LockWithTimeout(bigtime_t timeout);
    void Unlock();

    /// The thread on which messages are handled: the main thread's id.
    thread_id Thread() const;

    /// For the kits: delivers a message to the looper that does not come from the queue, such as an input event; it is
    /// the current message meanwhile, and objects that it destroys go only after this returns. Main thread, lock held.
    /// @param handler  one of this looper's
    void DeliverNow(std::unique_ptr<BMessage> message, BHandler* handler);

protected:
    /// True if a request to quit waits, in the queue or for the outermost loop. Main thread, lock held.
    bool IsQuitRequestWaiting() const;

private:
    friend class BHandler;

    std::vector<BHandler*> fHandlers;
    std::vector<BMessage*> fCurrent; ///< the messages in dispatch, the innermost last
    int32 fCountHeldBack = 0;        ///< requests to quit that wait for the outermost loop
};
