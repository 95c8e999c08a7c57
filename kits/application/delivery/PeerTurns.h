// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Token.h"
#include "kits/kernel/Bounds.h"
#include "kits/kernel/Clock.h"

#include <algorithm>
#include <vector>

namespace kits {

/// Counts how long the main loop has handled messages of each other process. A process that has used up its time waits
/// for the next turn, and for several turns after a message that took longer. Events, timers and the messages of other
/// processes are handled in between. Main thread.
class PeerTurns {
public:
    /// A turn of the loop, perhaps of a nested one, begins.
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

    /// A message of the process has been handled.
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

    /// A message that opened a menu may have taken minutes.
    static constexpr bigtime_t kMostRemembered = 8 * bounds::kLongestOfAProcess;

    std::vector<Entry> fEntries; ///< few: most turns meet one process
};

} // namespace kits
