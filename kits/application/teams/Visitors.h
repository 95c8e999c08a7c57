#pragma once

#include "kits/application/teams/Frame.h"
#include "kits/kernel/FileDescriptor.h"

#include <poll.h>

#include <chrono>
#include <functional>
#include <list>

namespace kits {

/// The connections that other teams have made to this one, and the messages that come on them. Whoever comes is a
/// stranger until it has said who it is, and gets little time and little memory for that. One thread.
class Visitors {
public:
    using Clock = std::chrono::steady_clock;

    // More than so many are not let in before others have gone: they wait outside.
    static constexpr size_t kMaxStrangers = 64;
    static constexpr size_t kMaxVisitors = 512;
    static constexpr auto kTimeToSayHello = std::chrono::seconds(2);

    struct Hooks {
        /// Something has come from a team.
        std::function<void(team_address)> onHeard;
        /// The connection of a team has ended, and it has no other.
        std::function<void(team_address)> onGone;
        /// A visitor asks for a sign of life from the main loop: to be answered by AnswerPing.
        std::function<void(uint64 visitor, uint64 number)> onPing;
    };

    explicit Visitors(Hooks hooks)
        : fHooks(std::move(hooks))
    {
    }

    /// Takes the socket that listens; lets everyone go when it gets one that is closed.
    void SetListener(FileDescriptor listener);

    /// Adds what is to be polled, always in the same order until Handle.
    void AppendPolls(std::vector<pollfd>* polls) const;
    /// When to call Handle though nothing can be read or written.
    Clock::time_point Deadline() const;
    /// Does what can be done now.
    /// @param polls  what AppendPolls has added, with what was found
    void Handle(const pollfd* polls);

    void AnswerPing(uint64 visitor, uint64 number);

    size_t Count() const { return fVisitors.size(); }

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
    };

    bool IsAccepting() const;
    void Accept();
    void Read(Visitor* visitor);
    void HandleFrames(Visitor* visitor);
    bool HandleFrame(Visitor* visitor, FrameKind kind, std::string_view content);
    bool HandleMessage(Visitor* visitor, std::string_view content);
    /// False if it still is held.
    bool DeliverHeld(Visitor* visitor);
    void Tell(Visitor* visitor, const std::string& frame);
    void Write(Visitor* visitor);

    const Hooks fHooks;
    FileDescriptor fListener;
    std::list<Visitor> fVisitors;
    uint64 fLastId = 0;
    Clock::time_point fAcceptAfter; ///< until then nobody is let in: no file descriptor is left
};

} // namespace kits
