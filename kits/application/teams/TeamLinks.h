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

/// The connections that this team has made, one to each team to which it sends. They are made when they are needed, and
/// stay. Any thread may send, and never waits; the team port's thread sends what a team does not take at once, notices
/// when a connection ends, and is the only one that closes connections.
class TeamLinks {
public:
    using Clock = std::chrono::steady_clock;

    static constexpr auto kPingInterval = std::chrono::seconds(1);

    struct Hooks {
        /// Called when the port's thread has something to do. Any thread, with the links' mutex held.
        std::function<void()> wake;
        /// Called when a connection has ended.
        std::function<void(team_address)> onClosed;
        /// Called when a watched team has not answered two pings, or answers again.
        std::function<void(team_address, bool isHung)> onHung;
        std::function<Clock::time_point()> now = Clock::now;
    };

    TeamLinks(PeerAccounts* accounts, Hooks hooks)
        : fAccounts(accounts)
        , fHooks(std::move(hooks))
    {
    }

    // Any thread may call these.

    /// Makes connections possible from now on. The folder must stay; null ends all connections.
    void SetFolder(const TeamFolder* folder);
    /// @return `B_BAD_HANDLER` if the team cannot be reached, or its only handler is known to be gone; `B_WOULD_BLOCK`
    ///         if too much waits for it already
    status_t Send(team_address team, MessageFrame frame, uint32 code, std::shared_ptr<const std::string> message);
    /// Returns whether there is a connection, or one could be made, and the handler is not known to be gone.
    bool IsReachable(const Address& address);
    /// The team has sent something: it is tried again, even if it was given up.
    void Forgive(team_address team);

    // Only the port's thread calls these.

    void AppendPolls(std::vector<pollfd>* polls);
    Clock::time_point Deadline();
    /// @param polls  the entries that AppendPolls has added, with the results of poll()
    void Handle(const pollfd* polls, size_t count);
    /// Sets whether to ping this team. Makes a connection.
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
        Clock::time_point nextPing = Clock::time_point::max(); ///< if it is watched
        uint64 lastPing = 0;
        int countUnanswered = 0;
        bool isHung = false;
        bool isBroken = false;
    };

    Link* LinkTo(team_address team, status_t* status);
    void Flush(Link* link);
    void Read(Link* link, bool* hasAnswered);
    bool HandleFrame(Link* link, FrameKind kind, std::string_view content, bool* hasAnswered);

    PeerAccounts* const fAccounts;
    const Hooks fHooks;
    std::mutex fMutex; ///< guards the members below; a leaf except for the wake hook
    const TeamFolder* fFolder = nullptr;
    std::map<team_address, std::unique_ptr<Link>> fLinks;
    std::vector<team_address> fGivenUp;    ///< the oldest first
    std::atomic<bool> fHasGivenUp = false; ///< saves locking the mutex for every received message
    std::vector<team_address> fPolled;     ///< by the position among the entries of AppendPolls
};

} // namespace kits
