// SPDX-License-Identifier: MIT
#include "kits/kernel/record/ActiveClock.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace kits;

namespace {

constexpr bigtime_t kTick = kMicrosecondsPerTick;

/// A clock of one processor and the moment of its last reading.
struct OneProcessor {
    ActiveClock clock{1};
    bigtime_t now = 1000000;

    explicit OneProcessor(uint64 ticks) { Read(0, ticks); }

    bigtime_t Read(bigtime_t later, uint64 ticks)
    {
        now += later;
        const ProcessorTime time{0, ticks};
        clock.Update(now, std::span(&time, 1));
        return clock.ActiveTime(0);
    }
    bigtime_t ReadNothing(bigtime_t later)
    {
        now += later;
        clock.Update(now, {});
        return clock.ActiveTime(0);
    }
};

} // namespace

TEST(ActiveClockTest, BeginsWithWhatWasCountedSoFar)
{
    OneProcessor processor(12345);
    EXPECT_EQ(processor.clock.ActiveTime(0), 12345 * kTick);
}

TEST(ActiveClockTest, AddsWhatIsCounted)
{
    OneProcessor processor(100);
    EXPECT_EQ(processor.Read(200000, 105), 105 * kTick);
    EXPECT_EQ(processor.Read(200000, 105), 105 * kTick);
    EXPECT_EQ(processor.Read(200000, 125), 125 * kTick);
}

TEST(ActiveClockTest, NeverRunsFasterThanTimeAndCarriesTheRest)
{
    OneProcessor processor(0);
    EXPECT_EQ(processor.Read(4000, 1), 4000);
    EXPECT_EQ(processor.Read(4000, 1), 8000);
    EXPECT_EQ(processor.Read(4000, 1), 10000);
    EXPECT_EQ(processor.Read(4000, 1), 10000);
}

TEST(ActiveClockTest, AFullyLoadedProcessorIsNeverBelowOneForLong)
{
    // Read each millisecond, counted every ten: the steps average out.
    OneProcessor processor(0);
    processor.Read(10000, 1);
    bigtime_t last = processor.clock.ActiveTime(0);
    for (uint64 tick = 2; tick < 100; ++tick) {
        for (int i = 0; i < 10; ++i) {
            const bigtime_t active = processor.Read(1000, tick);
            EXPECT_EQ(active - last, 1000);
            last = active;
        }
    }
}

TEST(ActiveClockTest, CarriesNoMoreThanASecond)
{
    OneProcessor processor(0);
    EXPECT_EQ(processor.Read(100000, 1000000), 100000) << "a count that cannot be";
    bigtime_t active = 100000;
    for (int i = 1; i <= 10; ++i)
        EXPECT_EQ(processor.Read(100000, 1000000), active += 100000);
    EXPECT_EQ(processor.Read(100000, 1000000), active) << "after one second it is idle again";
}

TEST(ActiveClockTest, NeverGoesBack)
{
    OneProcessor processor(1000);
    EXPECT_EQ(processor.Read(100000, 995), 1000 * kTick);
    EXPECT_EQ(processor.Read(100000, 1000), 1000 * kTick) << "the correction is waited for";
    EXPECT_EQ(processor.Read(100000, 1003), 1003 * kTick);
}

TEST(ActiveClockTest, GoesOnWhenTheCountBeginsAnew)
{
    OneProcessor processor(100000);
    EXPECT_EQ(processor.Read(100000, 7), 100000 * kTick);
    EXPECT_EQ(processor.Read(100000, 9), 100002 * kTick);
}

TEST(ActiveClockTest, AProcessorThatIsOfflineAddsNothing)
{
    OneProcessor processor(100);
    EXPECT_EQ(processor.ReadNothing(5000000), 100 * kTick);
    EXPECT_EQ(processor.Read(200000, 110), 110 * kTick);
}

TEST(ActiveClockTest, AProcessorAddsTheTimeOfTheReadingsThatItMissed)
{
    OneProcessor processor(0);
    for (int i = 0; i < 50; i++)
        EXPECT_EQ(processor.ReadNothing(200000), 0);
    EXPECT_EQ(processor.Read(200000, 510), 5100000) << "half of 10.2 s";
    for (uint64 ticks = 520; ticks < 600; ticks += 10)
        EXPECT_EQ(processor.Read(200000, ticks), static_cast<bigtime_t>(ticks) * kTick) << "nothing is carried";
}

TEST(ActiveClockTest, OtherProcessorsDoNotShortenThatTime)
{
    ActiveClock clock(2);
    const ProcessorTime first[] = {{0, 0}, {1, 0}};
    clock.Update(0, first);
    for (bigtime_t now = 200000; now <= 10000000; now += 200000) {
        const ProcessorTime one = {0, static_cast<uint64>(now / kTick / 2)};
        clock.Update(now, std::span(&one, 1));
    }
    const ProcessorTime both[] = {{0, 510}, {1, 510}};
    clock.Update(10200000, both);
    EXPECT_EQ(clock.ActiveTime(0), 5100000);
    EXPECT_EQ(clock.ActiveTime(1), 5100000);
}

TEST(ActiveClockTest, SaysUpToWhenItCounts)
{
    OneProcessor processor(100);
    EXPECT_EQ(processor.clock.LastTime(), 1000000);
    processor.ReadNothing(200000);
    EXPECT_EQ(processor.clock.LastTime(), 1000000);
    processor.Read(200000, 110);
    EXPECT_EQ(processor.clock.LastTime(), 1400000);
    const ProcessorTime unknown = {7, 5};
    processor.clock.Update(1600000, std::span(&unknown, 1));
    EXPECT_EQ(processor.clock.LastTime(), 1400000);
}

TEST(ActiveClockTest, AProcessorThatComesLaterBeginsWithNothing)
{
    ActiveClock clock(2);
    const ProcessorTime first[] = {{0, 50}};
    clock.Update(0, first);
    EXPECT_EQ(clock.ActiveTime(1), 0);
    const ProcessorTime both[] = {{0, 50}, {1, 7777}};
    clock.Update(1000000, both);
    EXPECT_EQ(clock.ActiveTime(1), 0);
    const ProcessorTime later[] = {{0, 50}, {1, 7780}};
    clock.Update(2000000, later);
    EXPECT_EQ(clock.ActiveTime(1), 3 * kTick);
}

TEST(ActiveClockTest, LeavesOutWhatItHasNoPlaceFor)
{
    ActiveClock clock(1);
    const ProcessorTime times[] = {{0, 1}, {1, 2}, {INT32_MAX, 3}, {-1, 4}};
    clock.Update(0, times);
    EXPECT_EQ(clock.ActiveTime(0), kTick);
    EXPECT_EQ(clock.CountProcessors(), 1u);
}

TEST(ActiveClockTest, AddsNothingWhileTimeGoesBack)
{
    OneProcessor processor(0);
    EXPECT_EQ(processor.Read(100000, 5), 50000);
    EXPECT_EQ(processor.Read(-40000, 8), 50000);
    EXPECT_EQ(processor.Read(30000, 8), 50000) << "still before the latest moment";
    EXPECT_EQ(processor.Read(20000, 8), 60000) << "10 ms after it";
}

TEST(ActiveClockTest, StandsAnyCounts)
{
    OneProcessor processor(UINT64_MAX);
    bigtime_t last = processor.clock.ActiveTime(0);
    EXPECT_GE(last, 0);
    for (uint64 ticks : {uint64{0}, UINT64_MAX, UINT64_MAX / 2, uint64{1}, UINT64_MAX}) {
        const bigtime_t active = processor.Read(1000, ticks);
        EXPECT_GE(active, last);
        EXPECT_LE(active, last + 1000);
        last = active;
    }
    processor.now = INT64_MIN;
    processor.Read(0, 5);
    processor.now = INT64_MAX;
    EXPECT_GE(processor.Read(0, 6), last);
}

TEST(ActiveClockTest, EveryShareLiesBetweenNothingAndAll)
{
    std::mt19937 random(1);
    ActiveClock clock(3);
    bigtime_t now = 0;
    std::vector<bigtime_t> last(3, 0);
    std::vector<bigtime_t> lastRead(3, 0);
    for (int reading = 0; reading < 20000; ++reading) {
        std::vector<ProcessorTime> times;
        for (int32 i = 0; i < 3; ++i)
            if (reading == 0 || random() % 10 != 0)
                times.push_back({i, random() % 1000 == 0 ? random() : static_cast<uint64>(now / 10000) - random() % 3});
        clock.Update(now, times);
        for (size_t i = 0; i < 3; ++i) {
            if (reading > 0) {
                EXPECT_GE(clock.ActiveTime(i), last[i]);
                EXPECT_LE(clock.ActiveTime(i) - last[i], now - lastRead[i]);
            }
            last[i] = clock.ActiveTime(i);
        }
        for (const ProcessorTime& time : times)
            lastRead[static_cast<size_t>(time.index)] = now;
        now += random() % 300000;
    }
}
