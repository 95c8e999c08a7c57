// SPDX-License-Identifier: MIT
#include "kits/kernel/record/ActiveClock.h"

#include <algorithm>

namespace kits {

namespace {

/// Far more than any machine runs, and far from overflowing.
constexpr uint64 kMostTicks = INT64_MAX / kMicrosecondsPerTick / 4;

/// At least 0, and far from overflowing.
bigtime_t TimeBetween(bigtime_t earlier, bigtime_t later)
{
    constexpr bigtime_t kLongest = INT64_MAX / 4;
    bigtime_t elapsed = 0;
    if (later <= earlier)
        return 0;
    return __builtin_sub_overflow(later, earlier, &elapsed) ? kLongest : std::min(elapsed, kLongest);
}

} // namespace

void ActiveClock::Update(bigtime_t now, std::span<const ProcessorTime> times)
{
    bool hasEntries = false;
    for (const ProcessorTime& time : times) {
        if (static_cast<size_t>(time.index) >= fProcessors.size())
            continue;
        Processor& processor = fProcessors[static_cast<size_t>(time.index)];
        const auto counted = static_cast<bigtime_t>(std::min(time.ticks, kMostTicks)) * kMicrosecondsPerTick;
        hasEntries = true;
        if (processor.counted == kNeverSeen) {
            processor.counted = counted;
            processor.active = fIsFirst ? counted : 0;
            processor.lastTime = now;
            continue;
        }
        const bigtime_t elapsed = TimeBetween(processor.lastTime, now);
        processor.lastTime = std::max(now, processor.lastTime);
        const bigtime_t advance = counted - processor.counted;
        if (advance > 0 || advance < -kMostCarried)
            processor.counted = counted;
        const bigtime_t due = std::min(processor.carried + std::max<bigtime_t>(advance, 0), elapsed + kMostCarried);
        const bigtime_t added = std::min(due, elapsed);
        processor.active += added;
        processor.carried = due - added;
    }
    if (hasEntries)
        fLastTime = std::max(now, fLastTime);
    fIsFirst = false;
}

} // namespace kits
