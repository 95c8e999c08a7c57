// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Token.h"
#include "kits/kernel/Bounds.h"
#include "kits/kernel/Clock.h"

#include <algorithm>
#include <vector>

namespace kits {

/// Measures how long the main loop has handled messages of each other process. A process that has used up its time
/// waits for the next turn, or for several turns after a message that took longer. Meanwhile the loop handles events,
/// timers and the messages of other processes. Main thread.
class PeerTurns {
public:
    /// Begins a turn of the loop, possibly of a nested one.
    void Begin()
    {
        for (Entry& entry : fEntries)
            entry.time -= bounds::kLongestOfAProcess;
        std::erase_if(fEntries, [](const Entry& entry) { return entry.time <= 0; });
    }

    [[nodiscard]] bool Waits(team_address process) const
    {
        return std::any_of(
            fEntries.begin(), fEntries.end(),
            [process](const Entry& entry) {
                return entry.process == process && entry.time >= bounds::kLongestOfAProcess;
            });
    }

    /// Adds the time that handling a message of the process has taken.
    void Add(team_address process, bigtime_t time)
    {
        auto found = std::find_if(fEntries.begin(), fEntries.end(),
                                  [process](const Entry& entry) { return entry.process == process; });
        if (found == fEntries.end())
            found = fEntries.insert(found, {process, 0});
        found->time = std::min(found->time + time, kMostRemembered);
    }

private:
    struct Entry {
        team_address process;
        bigtime_t time;
    };

    /// A limit, because a message that opened a menu may have taken minutes.
    static constexpr bigtime_t kMostRemembered = 8 * bounds::kLongestOfAProcess;

    std::vector<Entry> fEntries; ///< few: most turns meet one process
};

} // namespace kits
