// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"
#include "kits/application/Token.h"
#include "kits/kernel/Threads.h"

#include <vector>

class BHandler;
class BLooper;
class BMessage;

namespace kits {
struct MessageAccess;
}

/// The way to a handler from any thread, and from any process that the messenger is sent to. Names the handler; does
/// not own it and keeps nothing alive. A plain value. Any thread may call it, but one object only one at a time.
///
/// Sending never waits, whatever the time-out. Within a process a full queue gives `B_WOULD_BLOCK`. Messages to another
/// process (a "team") wait here while it does not read: up to 4 MiB for a team, then `B_WOULD_BLOCK`; of messages
/// marked "newest wins" one of each code for each handler. A team that has read nothing for two seconds is given up:
/// messengers to it are invalid until it sends something.
class BMessenger {
public:
    /// Without a target.
    BMessenger() = default;
    /// To a handler that belongs to a looper, or to a looper itself (by `handler`, or by `looper` with a null handler).
    /// The handler must not go away during this call.
    /// @param result  when not null, gets `B_OK`, `B_BAD_VALUE` if both are null, `B_BAD_HANDLER` if the handler has no
    ///                looper, `B_MISMATCHED_VALUES` if it has another than `looper`; after an error there is no target
    explicit BMessenger(const BHandler* handler, const BLooper* looper = nullptr, status_t* result = nullptr);
    /// To the application object with this signature, in any process of the user, this one too.
    /// @param team    its process, if there are several; -1 for the one that was started first
    /// @param result  when not null, gets `B_OK`, `B_BAD_VALUE` for null, `B_NAME_NOT_FOUND` if there is none
    explicit BMessenger(const char* application, team_id team = -1, status_t* result = nullptr);

    /// Sends a copy of the message and returns.
    /// @param replyTo  gets the answers; null for none
    /// @param timeout  of no effect
    /// @return `B_WOULD_BLOCK` if the target's queue is full, `B_BAD_HANDLER` if the target is gone, `B_BAD_VALUE` for
    ///         a null message
    status_t SendMessage(uint32 code, BHandler* replyTo = nullptr) const;
    status_t SendMessage(const BMessage* message, BHandler* replyTo = nullptr,
                         bigtime_t timeout = B_INFINITE_TIMEOUT) const;
    status_t SendMessage(const BMessage* message, const BMessenger& replyTo,
                         bigtime_t timeout = B_INFINITE_TIMEOUT) const;

    /// Sends a copy of the message to all existing targets, without a return address. The message is flattened once,
    /// and the targets in one team share one frame, so a further one costs next to nothing.
    static void SendToAll(const std::vector<BMessenger>& targets, const BMessage* message);

    /// Sends a copy of the message and waits for the reply. A message that is deleted unanswered, even with its handler
    /// or looper, is answered with the code `B_NO_REPLY`.
    ///
    /// On the main thread this waits in a nested loop that dispatches the messages of all loopers, in the order in
    /// which they were posted, until the reply arrives: so a target in this process answers too. On another thread it
    /// is a plain wait (the thread can be killed in it), and the interface lock must not be held (`B_NOT_ALLOWED`),
    /// because the main thread could never answer.
    /// @param deliveryTimeout  has no effect
    /// @param replyTimeout     microseconds; 0 or less does not wait
    /// @return as above; also `B_BAD_HANDLER` if the target's process ends meanwhile; `B_TIMED_OUT` (`B_WOULD_BLOCK`
    ///         with a time-out of 0 or less) if no reply came in time; `B_CANCELED` if the wait on the main thread was
    ///         ended because something must be destroyed. With an error `reply` stays unchanged.
    status_t SendMessage(const BMessage* message, BMessage* reply, bigtime_t deliveryTimeout = B_INFINITE_TIMEOUT,
                         bigtime_t replyTimeout = B_INFINITE_TIMEOUT) const;

    /// True if the target exists, as far as this process knows: it learns that a handler of another process is gone
    /// when it sends something to it.
    bool IsValid() const;
    /// True if the target is in this process, even if it is gone.
    bool IsTargetLocal() const;
    /// The target and its looper, if it is in this process and exists; else null. Use them only with the looper locked.
    BHandler* Target(BLooper** looper) const;
    /// Locks the target's looper. If true, the target exists until BLooper::Unlock.
    bool LockTarget() const { return LockTargetWithTimeout(B_INFINITE_TIMEOUT) == B_OK; }
    /// @return `B_BAD_HANDLER` if it is gone or in another process, `B_TIMED_OUT`, `B_WOULD_BLOCK`
    status_t LockTargetWithTimeout(bigtime_t timeout) const;
    /// The target's process; -1 for none.
    team_id Team() const;

    bool operator==(const BMessenger& other) const = default;

private:
    friend struct kits::MessageAccess;

    kits::Address fAddress;
};
