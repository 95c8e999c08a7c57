// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/record/ProcStat.h"

#include <span>
#include <vector>

namespace kits {

/// Turns the kernel's counts of active time into clocks that can be trusted: none goes back, and none runs faster than
/// time. The kernel's counts do both: they move in steps of 10 ms, are corrected backwards, and restart at 0.
class ActiveClock {
public:
    /// @param count  the number of processors, at least 1; others are ignored
    explicit ActiveClock(size_t count)
        : fProcessors(count)
    {
    }

    /// Takes a reading. To each processor it adds what was counted since that processor was last read, but no more than
    /// the time since then; the rest, up to kMostCarried, is added in the following readings. A processor without an
    /// entry keeps its time, so its next entry may add the time of all readings that it missed.
    ///
    /// The first reading gives the time counted so far. A processor that is missing there starts with 0 when it comes.
    /// A count that goes back by up to kMostCarried adds nothing until it has caught up; one that goes back by more has
    /// restarted.
    /// @param now  the moment of the reading in microseconds; one before a processor's last reading adds nothing to it
    void Update(bigtime_t now, std::span<const ProcessorTime> times);

    /// In microseconds, for any index below the count.
    [[nodiscard]] bigtime_t ActiveTime(size_t index) const { return fProcessors[index].active; }
    [[nodiscard]] size_t CountProcessors() const { return fProcessors.size(); }
    /// The moment up to which the active times count: that of the latest reading with an entry; 0 before the first one.
    [[nodiscard]] bigtime_t LastTime() const { return fLastTime; }

    /// A kernel that accounts lazily does so at least once a second.
    static constexpr bigtime_t kMostCarried = 1000000;

private:
    struct Processor {
        bigtime_t counted = kNeverSeen; ///< by the kernel
        bigtime_t carried = 0;          ///< counted and not added yet
        bigtime_t active = 0;
        bigtime_t lastTime = 0; ///< of its last reading
    };
    static constexpr bigtime_t kNeverSeen = -1;

    std::vector<Processor> fProcessors;
    bigtime_t fLastTime = 0;
    bool fIsFirst = true;
};

} // namespace kits
