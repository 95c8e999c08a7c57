// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/teams/Frame.h"
#include "kits/application/teams/SendQueue.h"
#include "kits/application/teams/TeamFolder.h"
#include "kits/kernel/FileDescriptor.h"

#include <poll.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <unordered_set>

namespace kits {

/// The connections that this team has made to others, one to each that it sends to. They are made when they are needed
/// and stay. Sending is done by any thread, and never waits; what a team does not take at once is sent by the thread of
/// the team port, which also hears when a connection ends, and alone closes it.
class TeamLinks {
public:
    using Clock = std::chrono::steady_clock;

    static constexpr auto kPingInterval = std::chrono::seconds(1);

    struct Hooks {
        /// The thread of the port has something to do. Any thread, with the links' mutex held.
        std::function<void()> wake;
        /// A connection has ended.
        std::function<void(team_address)> onClosed;
        /// A team that is watched has not answered two pings, or does so again.
        std::function<void(team_address, bool isHung)> onHung;
        std::function<Clock::time_point()> now = Clock::now;
    };

    TeamLinks(PeerAccounts* accounts, Hooks hooks)
        : fAccounts(accounts)
        , fHooks(std::move(hooks))
    {
    }

    // Any thread.

    /// Connections are made from now on. The folder must stay; null ends all connections.
    void SetFolder(const TeamFolder* folder);
    /// @return `B_BAD_HANDLER` if the team cannot be reached, or the one handler is known to be gone; `B_WOULD_BLOCK`
    /// if
    ///         it has too much to read already
    status_t Send(team_address team, MessageFrame frame, uint32 code, std::shared_ptr<const std::string> message);
    /// Whether there is a connection, or one could be made, and the handler is not known to be gone.
    bool IsReachable(const Address& address);
    /// The team has been heard of: it is tried again, though it was given up.
    void Forgive(team_address team);

    // The thread of the port.

    void AppendPolls(std::vector<pollfd>* polls);
    Clock::time_point Deadline();
    /// @param polls  what AppendPolls has added, with what was found
    void Handle(const pollfd* polls, size_t count);
    /// Whether to ask this team for signs of life. Makes a connection.
    void SetWatched(team_address team, bool isWatched);

private:
    struct Link {
        Link(PeerAccounts* accounts, team_address team)
            : claim(accounts, team, Resource::kLinks)
            , queue(PeerClaim(accounts, team, Resource::kUnsent))
        {
        }

        PeerClaim claim;
        FileDescriptor socket;
        SendQueue queue;
        FrameReader reader;
        std::unordered_set<token_t> goneHandlers;
        Clock::time_point fullSince = Clock::time_point::max();
        Clock::time_point nextPing = Clock::time_point::max(); ///< for one that is watched
        uint64 lastPing = 0;
        int countUnanswered = 0;
        bool isHung = false;
        bool isBroken = false;
    };

    Link* LinkTo(team_address team, status_t* status);
    void Flush(Link* link);
    void Read(Link* link, bool* hasAnswered);
    bool HandleFrame(Link* link, FrameKind kind, std::string_view content, bool* hasAnswered);

    void GiveUp(team_address team);

    PeerAccounts* const fAccounts;
    const Hooks fHooks;
    std::mutex fMutex; ///< guards what follows; a leaf but for the wake hook
    const TeamFolder* fFolder = nullptr;
    std::map<team_address, std::unique_ptr<Link>> fLinks;
    std::vector<team_address> fGivenUp;    ///< the oldest first
    std::atomic<bool> fHasGivenUp = false; ///< spares the mutex for every message that comes
    std::vector<team_address> fPolled;     ///< by the place in what AppendPolls has added
};

} // namespace kits
