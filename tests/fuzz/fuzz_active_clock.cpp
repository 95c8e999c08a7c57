// SPDX-License-Identifier: MIT
#include "kits/kernel/record/ActiveClock.h"
#include "tests/fuzz/Fuzz.h"

#include <cstring>

// Readings of two processors at any moments: no clock goes back or advances by more than the time since its processor
// was last read.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    struct Reading {
        uint32 later;
        uint64 ticks[2];
        uint8 flags;
    } __attribute__((packed));

    kits::ActiveClock clock(2);
    bigtime_t now = 0;
    bigtime_t last[2] = {0, 0};
    bigtime_t lastRead[2] = {-1, -1};
    for (bool isFirst = true; size >= sizeof(Reading); isFirst = false) {
        Reading reading;
        memcpy(&reading, data, sizeof(reading));
        data += sizeof(reading);
        size -= sizeof(reading);
        now += reading.later;
        kits::ProcessorTime times[2];
        size_t count = 0;
        for (int32 i = 0; i < 2; ++i) {
            // Also close to the time that has passed, where the clock decides.
            const uint64 near = static_cast<uint64>(now) / 10000 + reading.ticks[i] % 16;
            if ((reading.flags >> i & 1) != 0)
                times[count++] = {i, (reading.flags >> (2 + i) & 1) != 0 ? near : uint64{reading.ticks[i]}};
        }
        clock.Update(now, {times, count});
        for (size_t i = 0; i < 2; ++i) {
            const bigtime_t active = clock.ActiveTime(i);
            Expect(active >= last[i]);
            Expect(isFirst || active - last[i] <= (lastRead[i] < 0 ? 0 : now - lastRead[i]));
            last[i] = active;
        }
        for (size_t i = 0; i < count; ++i)
            lastRead[times[i].index] = now;
    }
    return 0;
}
