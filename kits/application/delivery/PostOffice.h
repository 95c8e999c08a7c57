// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Token.h"
#include "kits/application/delivery/PeerAccounts.h"
#include "kits/application/delivery/PeerTurns.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

class BHandler;
class BLooper;

namespace kits {

class ReplyWait;

/// All targets of messages in this process, by token, and the waiting messages: one queue for all loopers, so that
/// messages are handled in the order of posting.
///
/// Its mutex is a leaf: nothing else is locked or called under it, and messages are destroyed (which may answer their
/// senders) after it is released. Any thread unless stated otherwise.
class PostOffice {
public:
    static PostOffice& Get();

    token_t AddHandler(BHandler* handler);
    /// Turns an added handler into a looper.
    void MakeLooper(token_t token, BLooper* looper);
    /// Adds a target for one message, the answer; it is forgotten then.
    /// @param team  the team that was asked
    token_t AddReplyWait(std::shared_ptr<ReplyWait> wait, team_address team);
    /// Ends all waits for answers from the teams for which `isFailed` is true, with `B_BAD_HANDLER`.
    /// @param isFailed  called with the mutex held, so it locks and calls nothing
    void FailReplyWaits(const std::function<bool(team_address)>& isFailed);
    /// The looper that messages for kApplicationToken go to, 0 for none, and its signature.
    void SetApplication(token_t looper, std::string signature = {});
    token_t Application() const;
    std::string Signature() const;
    /// Forgets a handler, a looper or a wait, and drops the messages for it.
    void Remove(token_t token);

    /// Moves a handler to a looper; 0 removes it from its looper.
    void SetLooper(token_t handler, token_t looper);
    /// From now on dispatches the looper's messages; until then they are held back.
    void Start(token_t looper);
    /// Drops the looper's messages and accepts no more. False if it was closed already.
    bool Close(token_t looper);

    /// Queues a message, or gives it to the thread that waits for it. Takes ownership only with `B_OK`.
    /// @param work  of a message from another team, else null: kept until the message has been handled. With `B_OK` it
    ///              is taken over, or exchanged for that of the message that this one replaces
    /// @return `B_BAD_HANDLER` if the target or its looper is gone, `B_WOULD_BLOCK` if the queue is full
    status_t Post(token_t target, std::unique_ptr<BMessage>& message, std::unique_ptr<PeerWork>* work = nullptr);

    /// True if there is such a handler, also without a looper.
    bool Exists(token_t handler) const;
    /// True if a message could be sent there now.
    bool IsReachable(token_t token) const;
    /// Returns the looper of a handler, open or not; 0 if it has none or is gone.
    token_t LooperOf(token_t handler) const;
    bool IsOpen(token_t looper) const;
    /// The number of messages that wait for a looper.
    int32 CountWaiting(token_t looper) const;
    /// True if a message with this code waits for the looper itself.
    bool HasWaiting(token_t looper, uint32 what) const;

    // Main thread, or with the interface lock held; the result exists as long as the lock is held.

    /// Returns null if it is gone; `looper` becomes null too if that is gone or closed.
    BHandler* HandlerAt(token_t token, BLooper** looper) const;
    /// Returns null if it is gone. Finds closed loopers too.
    BLooper* LooperAt(token_t token) const;
    /// All loopers that were started and are not closed, in the order in which they were made.
    std::vector<token_t> RunningLoopers() const;

    // On the main thread with the interface lock held.

    /// Begins a turn of the loop. Messages are numbered in the order of posting.
    /// @return the number of the next message
    uint64 BeginTurn();
    /// Dispatches the oldest message with a number below `end`, skipping those of processes that have used up their
    /// time (PeerTurns).
    /// @return false if there is none
    bool DispatchNext(uint64 end);
    /// Takes the work of the message in dispatch, for code that will handle the message later; null if it has none, or
    /// if another message is in dispatch.
    std::unique_ptr<PeerWork> TakeWork(const BMessage& message);
    bool HasMessages() const;
    /// True if messages wait and all of them are marked "newest wins".
    bool HasOnlyStreams() const;

private:
    struct Parcel {
        token_t handler = 0;
        token_t looper = 0;
        std::unique_ptr<BMessage> message; ///< null once it was dropped
        std::unique_ptr<PeerWork> work{};  ///< see Post
    };
    struct HandlerState {
        BHandler* handler;
        token_t looper = 0;
        /// The waiting messages for it that are marked "newest wins", by code. Elements of a deque keep their
        /// addresses.
        std::vector<std::pair<uint32, Parcel*>> newest;
    };
    struct LooperState {
        BLooper* looper;
        bool isStarted = false;
        bool isClosed = false;
        int32 countWaiting = 0;
        std::deque<Parcel> held;
    };
    struct WaitState {
        std::shared_ptr<ReplyWait> wait;
        team_address team;
    };

    PostOffice() = default;
    token_t Resolve(token_t token) const { return token == kApplicationToken ? fApplication : token; }
    /// Returns null if it is gone or closed.
    const LooperState* OpenLooper(token_t looper) const;
    LooperState* OpenLooper(token_t looper)
    {
        return const_cast<LooperState*>(std::as_const(*this).OpenLooper(looper));
    }
    bool TakeNext(uint64 end, Parcel* taken, bool* isDeliverable);
    void Forget(Parcel* parcel);
    /// Moves the messages for this handler or looper out of the queues.
    template <class Matches> void Drop(const Matches& matches, std::vector<Parcel>* dropped);

    mutable std::mutex fMutex;
    token_t fLastToken = kApplicationToken;
    token_t fApplication = 0;
    std::string fSignature;
    std::unordered_map<token_t, HandlerState> fHandlers;
    std::map<token_t, LooperState> fLoopers;
    std::unordered_map<token_t, WaitState> fReplyWaits;
    std::deque<Parcel> fQueue;
    /// The message in dispatch and its parcel. Only the main thread uses them.
    Parcel* fInDispatch = nullptr;
    const BMessage* fMessageInDispatch = nullptr;
    PeerTurns fPeerTurns;    ///< used by the main thread only, too
    uint64 fFirstNumber = 0; ///< of the first message in the queue
};

} // namespace kits
