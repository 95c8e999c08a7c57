#include "kits/kernel/ActiveClock.h"

#include <algorithm>

namespace kits {

namespace {

/// Far more than any machine runs, and far from overflowing.
constexpr uint64 kMostTicks = INT64_MAX / kMicrosecondsPerTick / 4;

} // namespace

void ActiveClock::Update(bigtime_t now, std::span<const ProcessorTime> times)
{
    bigtime_t elapsed = 0;
    if (!fIsFirst && now > fLastTime && __builtin_sub_overflow(now, fLastTime, &elapsed))
        elapsed = INT64_MAX / 4;
    elapsed = std::min(elapsed, INT64_MAX / 4);

    for (const ProcessorTime& time : times) {
        if (static_cast<size_t>(time.index) >= fProcessors.size())
            continue;
        Processor& processor = fProcessors[static_cast<size_t>(time.index)];
        const auto counted = static_cast<bigtime_t>(std::min(time.ticks, kMostTicks)) * kMicrosecondsPerTick;
        if (processor.counted == kNeverSeen) {
            processor.counted = counted;
            processor.active = fIsFirst ? counted : 0;
            continue;
        }
        const bigtime_t advance = counted - processor.counted;
        if (advance > 0 || advance < -kMostCarried)
            processor.counted = counted;
        const bigtime_t due = std::min(processor.carried + std::max<bigtime_t>(advance, 0), elapsed + kMostCarried);
        const bigtime_t added = std::min(due, elapsed);
        processor.active += added;
        processor.carried = due - added;
    }
    fLastTime = fIsFirst ? now : std::max(now, fLastTime);
    fIsFirst = false;
}

} // namespace kits
