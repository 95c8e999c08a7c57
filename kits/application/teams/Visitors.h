// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/delivery/LoopGuest.h"
#include "kits/application/delivery/PeerAccounts.h"
#include "kits/application/teams/Frame.h"
#include "kits/application/teams/ReadShift.h"
#include "kits/kernel/FileDescriptor.h"

#include <poll.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <list>
#include <mutex>
#include <utility>

namespace kits {

/// The connections that other teams have made to this one, and the messages that arrive on them. A visitor is a
/// stranger until it has said who it is, and gets little time and little memory for that. Everything that a process
/// uses is charged to its account (see PeerAccounts); while its account has no room, nothing more is read from it. A
/// visitor that breaks the rules or is too slow gets a reason, and its connection is closed.
///
/// Two threads read, see ReadShift: as long as the main thread's loop runs, it reads the visitors that have identified
/// themselves, as soon as it wakes. The port's thread does everything else: it accepts and closes connections, retries
/// messages that a looper did not take, and reads everything while the main thread is held up or runs no loop.
class Visitors : public LoopGuest {
public:
    using Clock = std::chrono::steady_clock;

    struct Hooks {
        /// Called when the port's thread has something to do. Any thread; this and the next two with the visitors'
        /// mutex held.
        std::function<void()> wake;
        /// Called when something has arrived from a team.
        std::function<void(team_address)> onHeard;
        /// Called when visitors ask for a sign of life of the main loop, which must then call AnswerPings. Not called
        /// again before that.
        std::function<void()> onPing;
        /// Called when the connection of a team has ended, and it has no other. On the port's thread.
        std::function<void(team_address)> onGone;
        std::function<Clock::time_point()> now = Clock::now;
    };

    Visitors(PeerAccounts* accounts, Hooks hooks)
        : fAccounts(accounts)
        , fHooks(std::move(hooks))
    {
    }

    /// Takes the listening socket. Call it while the port's thread does not run.
    void SetListener(FileDescriptor listener) { fListener = std::move(listener); }
    /// Closes all connections, and stops listening. Call it while the port's thread does not run.
    void Clear();

    /// Answers the newest ping of each visitor. Any thread.
    void AnswerPings();
    /// Some account has room again; PeerAccounts calls this.
    void NoteRoom();

    // Only the port's thread calls these.

    /// Adds the descriptors to poll, in an order that stays the same until Handle.
    void AppendPolls(std::vector<pollfd>* polls);
    /// When to call Handle even if nothing can be read or written.
    Clock::time_point Deadline();
    /// Does everything that can be done now.
    /// @param polls  the entries that AppendPolls has added, with the results of poll()
    void Handle(const pollfd* polls);

    // Only the main thread calls these.

    void MainWaits() override;
    void MainWorks() override;
    void Read(WakeSet::Number visitor) override;

private:
    /// A received message that not all its handlers have got yet.
    struct Delivery {
        MessageFrame frame;
        BMessage message;
        PeerClaim bytes;                ///< for its bytes
        size_t next = 0;                ///< the index of the next target
        std::unique_ptr<BMessage> copy; ///< for that target
        std::unique_ptr<PeerWork> work; ///< of the copy
    };
    /// Why no more is read from a visitor.
    enum class Obstacle { kNone, kNoRoom, kFullLooper };
    struct Visitor {
        uint64 id;
        FileDescriptor socket;
        team_address process; ///< from the system; without its start time if it has ended already
        PeerClaim connection;
        PeerClaim incomplete;       ///< the reader's memory
        PeerClaim unsent;           ///< the memory of `out`
        Clock::time_point deadline; ///< for its hello or the frame that has begun; none while there is an obstacle
        team_address team = 0;      ///< 0 for a stranger
        FrameReader reader;
        uint64 countFrames = 0;     ///< when the deadline was set
        std::string out;            ///< answers that it has not read yet
        std::optional<uint64> ping; ///< the newest unanswered one
        std::optional<Delivery> held;
        Obstacle obstacle = Obstacle::kNone;
        Resource missing = Resource::kIncomplete; ///< the resource of which there is no room
        size_t countMissing = 0;
        bool isGone = false;
        bool isReplaced = false; ///< by a newer one of the same team
        bool isInWakeSet = false;

        bool IsStranger() const { return team == 0; }
        bool IsRead() const { return !isGone && obstacle == Obstacle::kNone; }
    };
    struct Newcomer {
        FileDescriptor socket;
        team_address process;
    };

    /// Accepts this many waiting connections. Called without the mutex.
    std::vector<Newcomer> Accept(size_t most);

    // Called with the mutex held.
    /// Returns how many more may be accepted now.
    size_t CountWelcome() const;
    void LetIn(Newcomer newcomer);
    /// Returns whether the port's thread must read this one now.
    bool IsForPort(const Visitor& visitor) const { return !visitor.isInWakeSet || !fShift.IsMains(); }
    static void RemoveFromWakeSet(Visitor* visitor);
    void ReadFrom(Visitor* visitor);
    /// Returns how many bytes may be read from it now.
    size_t ReadSize(const Visitor& visitor) const;
    void HandleFrames(Visitor* visitor);
    void HandleFrame(Visitor* visitor, FrameKind kind, std::string_view content);
    void HandleHello(Visitor* visitor, FrameKind kind, std::string_view content);
    void HandleMessage(Visitor* visitor, std::string_view content);
    /// Returns false if it is still held.
    bool DeliverHeld(Visitor* visitor);
    void NoteNoRoom(Visitor* visitor, Resource resource, size_t amount);
    /// Continues after an obstacle.
    void GoOn(Visitor* visitor);
    void GoOnWhereThereIsRoom();
    void CheckDeadline(Visitor* visitor);
    void SetDeadline(Visitor* visitor);
    void Tell(Visitor* visitor, const std::string& frame);
    void Write(Visitor* visitor);
    static void Close(Visitor* visitor, CloseReason reason);

    PeerAccounts* const fAccounts;
    const Hooks fHooks;
    FileDescriptor fListener;       ///< used by the port's thread, as the next one
    Clock::time_point fAcceptAfter; ///< no connection is accepted before: no file descriptor is left
    std::mutex fMutex;              ///< guards the members below; locked before those of the port and the post office
    std::list<Visitor> fVisitors;
    uint64 fLastId = 0;
    ReadShift fShift;
    bool fIsPingWaiting = false;
    /// Whether there is any visitor that the main thread could read; saves locking the mutex if nobody connects.
    std::atomic<bool> fHasKnown = false;
    std::atomic<bool> fHasRoom = false; ///< where there was none before
};

} // namespace kits
