#pragma once

#include "kits/application/loops/LoopGuest.h"
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
/// stranger until it has said who it is, and gets little time and little memory for that.
///
/// Two threads read what comes, see ReadShift: while the main thread's loop comes by it reads those who have said who
/// they are, as soon as it wakes. All else is done by the thread of the port, which lets in and shows out, tries again
/// what a looper did not take, and reads everything while the main thread is held up or runs no loop.
class Visitors : public LoopGuest {
public:
    using Clock = std::chrono::steady_clock;

    // More than so many are not let in before others have gone: they wait outside.
    static constexpr size_t kMaxStrangers = 64;
    static constexpr size_t kMaxVisitors = 512;
    static constexpr auto kTimeToSayHello = std::chrono::seconds(2);

    struct Hooks {
        /// The thread of the port has something to do. Any thread, as the next two with the visitors' mutex held.
        std::function<void()> wake;
        /// Something has come from a team.
        std::function<void(team_address)> onHeard;
        /// A visitor asks for a sign of life from the main loop: to be answered by AnswerPing.
        std::function<void(uint64 visitor, uint64 number)> onPing;
        /// The connection of a team has ended, and it has no other. The thread of the port.
        std::function<void(team_address)> onGone;
    };

    explicit Visitors(Hooks hooks)
        : fHooks(std::move(hooks))
    {
    }

    /// Takes the socket that listens. While the thread of the port does not run.
    void SetListener(FileDescriptor listener);
    /// Lets everyone go, and listens no more. While the thread of the port does not run.
    void Clear();

    void AnswerPing(uint64 visitor, uint64 number);

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
        size_t weight = 0;
        size_t next = 0;                ///< the target whose turn it is
        std::unique_ptr<BMessage> copy; ///< for that
    };
    struct Visitor {
        uint64 id;
        FileDescriptor socket;
        pid_t process;
        Clock::time_point deadline; ///< of its hello
        team_address team = 0;      ///< 0 for a stranger
        FrameReader reader;
        std::string out; ///< what it is told and has not taken yet
        /// For a looper that takes no more just now; nothing further is read meanwhile.
        std::optional<Delivery> held;
        bool isGone = false;
        bool isReplaced = false; ///< by a newer one of the same team
        bool isInWakeSet = false;

        bool IsStranger() const { return team == 0; }
    };

    // With the mutex held.
    bool IsAccepting() const;
    void Accept();
    /// Whether the thread of the port is to read this one now.
    bool IsForPort(const Visitor& visitor) const;
    static void RemoveFromWakeSet(Visitor* visitor);
    void ReadFrom(Visitor* visitor);
    void HandleFrames(Visitor* visitor);
    bool HandleFrame(Visitor* visitor, FrameKind kind, std::string_view content);
    bool HandleMessage(Visitor* visitor, std::string_view content);
    /// False if it still is held.
    bool DeliverHeld(Visitor* visitor);
    void Tell(Visitor* visitor, const std::string& frame);
    void Write(Visitor* visitor);

    const Hooks fHooks;
    FileDescriptor fListener;       ///< of the port's thread, as the next one
    Clock::time_point fAcceptAfter; ///< until then nobody is let in: no file descriptor is left
    std::mutex fMutex;              ///< guards what follows; taken before those of the port and the post office
    std::list<Visitor> fVisitors;
    uint64 fLastId = 0;
    ReadShift fShift;
    /// Whether there is anyone whom the main thread could read; spares it the mutex where nobody comes.
    std::atomic<bool> fHasKnown = false;
};

} // namespace kits
