// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Token.h"
#include "kits/application/delivery/PeerAccounts.h"
#include "kits/application/delivery/PeerTurns.h"

#include <deque>
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

/// Everything in this process that messages can be sent to, by token, and the messages that wait: one queue for all
/// loopers, so that they are taken in the order of posting.
///
/// Its mutex is a leaf: nothing else is taken or called under it, and messages are destroyed (which may answer their
/// senders) after it is released. Any thread, but where it says more.
class PostOffice {
public:
    static PostOffice& Get();

    token_t AddHandler(BHandler* handler);
    /// Makes a looper of a handler that was added.
    void MakeLooper(token_t token, BLooper* looper);
    /// Something that one message can be sent to, which is then forgotten.
    /// @param team  the one that is asked
    token_t AddReplyWait(std::shared_ptr<ReplyWait> wait, team_address team);
    /// Ends all waits for answers of a team with `B_BAD_HANDLER`.
    void FailReplyWaits(team_address team);
    /// The same, of all teams but this one.
    void FailReplyWaitsOfOthers();
    /// The looper that messages for kApplicationToken go to, 0 for none, and its signature.
    void SetApplication(token_t looper, std::string signature = {});
    token_t Application() const;
    std::string Signature() const;
    /// Forgets a handler, a looper or a wait, and drops the messages for it.
    void Remove(token_t token);

    /// Puts a handler into a looper; 0 takes it out.
    void SetLooper(token_t handler, token_t looper);
    /// Lets the looper's messages be dispatched; until then they are held back.
    void Start(token_t looper);
    /// Drops the looper's messages and takes no more. False if it was closed already.
    bool Close(token_t looper);

    /// Queues a message, or gives it to whoever waits for it. It is taken over with `B_OK` only.
    /// @param work  of a message from another team, else null: kept until the message has been handled. With `B_OK` it
    ///              is taken over, or exchanged for that of a message that this one replaces
    /// @return `B_BAD_HANDLER` if the target or its looper is gone, `B_WOULD_BLOCK` if the queue is full
    status_t Post(token_t target, std::unique_ptr<BMessage>& message, std::unique_ptr<PeerWork>* work = nullptr);

    /// Whether there is such a handler, also one without a looper.
    bool Exists(token_t handler) const;
    /// Whether a message could be sent there now.
    bool IsReachable(token_t token) const;
    /// The looper of a handler, open or not; 0 if it has none or is gone.
    token_t LooperOf(token_t handler) const;
    bool IsOpen(token_t looper) const;
    /// How many messages wait for a looper.
    int32 CountWaiting(token_t looper) const;
    /// Whether a message with this code waits for the looper itself.
    bool HasWaiting(token_t looper, uint32 what) const;

    // Main thread, or with the interface lock held, as long as which what is returned exists.

    /// Null if it is gone; its looper too if that is gone or closed.
    BHandler* HandlerAt(token_t token, BLooper** looper) const;
    /// Null if it is gone. Closed loopers are found.
    BLooper* LooperAt(token_t token) const;
    /// Of all loopers that have been started and are not closed, in the order in which they were made.
    std::vector<token_t> RunningLoopers() const;

    // Main thread with the interface lock held.

    /// A turn of the loop begins. Messages are numbered in the order of posting.
    /// @return the number that the next one will get
    uint64 BeginTurn();
    /// Dispatches the oldest message with a number below `end`, skipping those of processes that have used up their
    /// time (PeerTurns). @return false if there is none
    bool DispatchNext(uint64 end);
    /// The work of the message that is being dispatched, for who will handle that only later; null if there is none, or
    /// another message is meant.
    std::unique_ptr<PeerWork> TakeWork(const BMessage& message);
    bool HasMessages() const;
    /// Whether messages wait, and all of them are marked "newest wins".
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
        /// The messages marked "newest wins" that wait for it, by code. Elements of a deque stay where they are.
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
    struct Dropped {
        std::unique_ptr<BMessage> message;
        std::unique_ptr<PeerWork> work;
    };

    PostOffice() = default;
    token_t Resolve(token_t token) const { return token == kApplicationToken ? fApplication : token; }
    LooperState* OpenLooperOf(const HandlerState& handler);
    bool TakeNext(uint64 end, Parcel* taken, bool* isDeliverable);
    void Forget(Parcel* parcel);
    template <class Matches> void FailReplyWaitsIf(const Matches& matches);
    /// Moves the messages for this handler or looper out of the queues.
    template <class Matches> void Drop(const Matches& matches, std::vector<Dropped>* dropped);

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
    PeerTurns fPeerTurns;    ///< of the main thread alone, too
    uint64 fFirstNumber = 0; ///< of the first in the queue
};

} // namespace kits
