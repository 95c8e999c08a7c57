#pragma once

#include "kits/application/Token.h"
#include "kits/kernel/Bounds.h"
#include "kits/kernel/Clock.h"

#include <algorithm>
#include <vector>

namespace kits {

/// How long the main loop has handled the messages of each other process. One that has had its time in a turn waits for
/// the next, and for some more turns if a message of it took longer. So events, timers and the messages of others come
/// in between, whatever it sends. Main thread.
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
        return std::any_of(fEntries.begin(), fEntries.end(), [process](const Entry& entry) {
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
