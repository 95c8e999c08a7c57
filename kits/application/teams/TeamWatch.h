// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Token.h"
#include "kits/application/teams/TeamFolder.h"
#include "kits/kernel/FileDescriptor.h"

#include <poll.h>

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <vector>

namespace kits {

/// Notifies watchers of applications that come and go: whose socket appears in the folder, whose connection ends, and
/// which do not answer. An application that hangs counts as gone, and as launched when it answers again. A new watcher
/// states which teams exist at that moment, so it misses nothing before the port's thread looks for the first time.
class TeamWatch {
public:
    using Clock = std::chrono::steady_clock;

    struct Hooks {
        std::function<void()> wake;
        /// Called to connect to a team and ping it, or to stop that.
        std::function<void(team_address, bool isWatched)> setWatched;
        std::function<bool(team_address)> isReachable;
    };

    explicit TeamWatch(Hooks hooks)
        : fHooks(std::move(hooks))
    {
    }

    // Any thread may call these.
    /// @param events   see BRoster::StartWatching
    /// @param present  the teams that are no news, because they were launched before the watcher came. For an existing
    ///                 watcher, only the events change
    void Add(const Address& watcher, uint32 events, const std::vector<TeamFolder::Entry>& present);
    bool Remove(const Address& watcher);
    void Clear();

    // Only the port's thread calls these.
    void AppendPolls(std::vector<pollfd>* polls) const;
    Clock::time_point Deadline();
    void Handle(const pollfd* polls, const TeamFolder& folder);
    /// A connection from or to the team has ended.
    void NoteClosed(team_address team);
    void NoteHung(team_address team, bool isHung);

private:
    using Signatures = std::map<team_address, std::string>;

    struct Watcher {
        Address address;
        uint32 events;
        bool isNew = true;    ///< nobody has looked since it came
        Signatures present{}; ///< present when it came, and not found since
    };
    struct Team {
        std::string signature;
        bool isHung = false;
        bool hasLeft = false; ///< it has taken its name out of the folder, as every program does that ends in order
    };

    bool HasWatchers();
    /// Reads the folder's notices. Returns false if there are none.
    bool ReadNotices();
    bool HasNewWatchers();
    void ForgetTeams();
    void Look(const TeamFolder& folder);
    /// Skips watchers for whom it is no news.
    void TellLaunched(team_address team, const std::string& signature);
    /// Reports those that ended before anybody looked.
    void TellOfTheGone(const std::vector<TeamFolder::Entry>& entries);
    void Tell(uint32 event, team_address team, const std::string& signature);
    void Tell(const std::vector<Watcher>& watchers, uint32 event, team_address team, const std::string& signature);

    const Hooks fHooks;
    std::mutex fMutex;
    std::vector<Watcher> fWatchers; ///< guarded by the mutex

    // Used by the port's thread.
    FileDescriptor fNotifier; ///< open while there are watchers
    std::map<team_address, Team> fTeams;
    Clock::time_point fLookAt = Clock::time_point::max();
    bool fIsWatching = false;
};

} // namespace kits
