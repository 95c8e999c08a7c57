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

namespace kits {

/// The connections that other teams have made to this one, and the messages that come on them. Whoever comes is a
/// stranger until it has said who it is, and gets little time and little memory for that. What a process may have of
/// anything is kept in its account (see PeerAccounts); while there is no room in that nothing more is read from it, and
/// whoever breaks the rules or is too slow is told why and shown out.
///
/// Two threads read what comes, see ReadShift: while the main thread's loop comes by it reads those who have said who
/// they are, as soon as it wakes. All else is done by the thread of the port, which lets in and shows out, tries again
/// what a looper did not take, and reads everything while the main thread is held up or runs no loop.
class Visitors : public LoopGuest {
public:
    using Clock = std::chrono::steady_clock;

    struct Hooks {
        /// The thread of the port has something to do. Any thread, as the next two with the visitors' mutex held.
        std::function<void()> wake;
        /// Something has come from a team.
        std::function<void(team_address)> onHeard;
        /// Visitors ask for a sign of life from the main loop: it is to call AnswerPings. Not again before that.
        std::function<void()> onPing;
        /// The connection of a team has ended, and it has no other. The thread of the port.
        std::function<void(team_address)> onGone;
        std::function<Clock::time_point()> now = Clock::now;
    };

    Visitors(PeerAccounts* accounts, Hooks hooks)
        : fAccounts(accounts)
        , fHooks(std::move(hooks))
    {
    }

    /// Takes the socket that listens. While the thread of the port does not run.
    void SetListener(FileDescriptor listener);
    /// Lets everyone go, and listens no more. While the thread of the port does not run.
    void Clear();

    /// Answers the newest ping of each visitor. Any thread.
    void AnswerPings();
    /// There is room again in some account, as PeerAccounts says it.
    void NoteRoom();

    // The thread of the port.

    /// Adds what is to be polled, always in the same order until Handle.
    void AppendPolls(std::vector<pollfd>* polls);
    /// When to call Handle though nothing can be read or written.
    Clock::time_point Deadline();
    /// Does what can be done now.
    /// @param polls  what AppendPolls has added, with what was found
    void Handle(const pollfd* polls);

    // The main thread.

    void MainWaits() override;
    void MainWorks() override;
    void Read(WakeSet::Number visitor) override;

private:
    /// A message that has come and is not yet with all its handlers.
    struct Delivery {
        MessageFrame frame;
        BMessage message;
        PeerClaim bytes;                ///< of that
        size_t next = 0;                ///< the target whose turn it is
        std::unique_ptr<BMessage> copy; ///< for that
        std::unique_ptr<PeerWork> work; ///< of the copy
    };
    /// What keeps from reading more of a visitor.
    enum class Obstacle { kNone, kNoRoom, kFullLooper };
    struct Visitor {
        uint64 id;
        FileDescriptor socket;
        team_address process; ///< as the system knows it; without the moment of its start if it has ended already
        PeerClaim connection;
        PeerClaim incomplete;       ///< the reader's memory
        PeerClaim unsent;           ///< the memory of `out`
        Clock::time_point deadline; ///< of its hello or of the frame that has begun; none while there is an obstacle
        team_address team = 0;      ///< 0 for a stranger
        FrameReader reader;
        uint64 countFrames = 0;     ///< when the deadline was set
        std::string out;            ///< what it is told and has not taken yet
        std::optional<uint64> ping; ///< the newest that is not answered
        std::optional<Delivery> held;
        Obstacle obstacle = Obstacle::kNone;
        Resource missing = Resource::kIncomplete; ///< of which there is no room
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

    /// Takes so many who wait at the door. Without the mutex.
    std::vector<Newcomer> Accept(size_t most);

    // With the mutex held.
    /// How many more may be let in now.
    size_t CountWelcome() const;
    void LetIn(Newcomer newcomer);
    /// Whether the thread of the port is to read this one now.
    bool IsForPort(const Visitor& visitor) const;
    static void RemoveFromWakeSet(Visitor* visitor);
    void ReadFrom(Visitor* visitor);
    /// How much may be read of it now, in bytes.
    size_t ReadSize(const Visitor& visitor) const;
    void HandleFrames(Visitor* visitor);
    void HandleFrame(Visitor* visitor, FrameKind kind, std::string_view content);
    void HandleHello(Visitor* visitor, FrameKind kind, std::string_view content);
    void HandleMessage(Visitor* visitor, std::string_view content);
    /// False if it still is held.
    bool DeliverHeld(Visitor* visitor);
    void NoteNoRoom(Visitor* visitor, Resource resource, size_t amount);
    /// Goes on where there was an obstacle.
    void GoOn(Visitor* visitor);
    void GoOnWhereThereIsRoom();
    void CheckDeadline(Visitor* visitor);
    void SetDeadline(Visitor* visitor);
    void Tell(Visitor* visitor, const std::string& frame);
    void Write(Visitor* visitor);
    static void Close(Visitor* visitor, CloseReason reason);

    PeerAccounts* const fAccounts;
    const Hooks fHooks;
    FileDescriptor fListener;       ///< of the port's thread, as the next one
    Clock::time_point fAcceptAfter; ///< until then nobody is let in: no file descriptor is left
    std::mutex fMutex;              ///< guards what follows; taken before those of the port and the post office
    std::list<Visitor> fVisitors;
    uint64 fLastId = 0;
    ReadShift fShift;
    bool fIsPingWaiting = false;
    /// Whether there is anyone whom the main thread could read; spares it the mutex where nobody comes.
    std::atomic<bool> fHasKnown = false;
    std::atomic<bool> fHasRoom = false; ///< where there was none
};

} // namespace kits
