// SPDX-License-Identifier: MIT
#include "kits/application/Timer.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/kernel/Errors.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>

#include <memory>

using kits::EventLoop;
using kits::Timer;

namespace {

class TimerTest : public testing::Test {
protected:
    void RunAt(bigtime_t time)
    {
        fClock.now = time;
        EventLoop::RunDue();
    }

    const kits::InterfaceLocker fLocker;
    test::MockClock fClock;
    const bigtime_t fStart = fClock.now;
};

} // namespace

TEST_F(TimerTest, CallsOnceWhenItIsTime)
{
    int count = 0;
    Timer timer([&count] { ++count; });
    EXPECT_EQ(EventLoop::Deadline(), B_INFINITE_TIMEOUT);
    EXPECT_EQ(timer.Start(1000, false), B_OK);
    EXPECT_TRUE(timer.IsRunning());
    EXPECT_EQ(EventLoop::Deadline(), fStart + 1000);
    RunAt(fStart + 999);
    EXPECT_EQ(count, 0);
    RunAt(fStart + 1000);
    EXPECT_EQ(count, 1);
    EXPECT_FALSE(timer.IsRunning());
    RunAt(fStart + 5000);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(EventLoop::Deadline(), B_INFINITE_TIMEOUT);
}

TEST_F(TimerTest, KeepsItsBeatAndLeavesOutWhatWasMissed)
{
    int count = 0;
    Timer timer([&count] { ++count; });
    timer.Start(1000);
    EXPECT_EQ(timer.Interval(), 1000);
    RunAt(fStart + 1300);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(EventLoop::Deadline(), fStart + 2000);
    RunAt(fStart + 2000);
    EXPECT_EQ(count, 2);
    RunAt(fStart + 3600000000 + 500);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(EventLoop::Deadline(), fStart + 3600000000 + 1000);
}

TEST_F(TimerTest, IsStoppedStartedAnewAndDestroyed)
{
    int count = 0;
    auto timer = std::make_unique<Timer>([&count] { ++count; });
    timer->Start(1000);
    fClock.now += 600;
    timer->Start(1000);
    RunAt(fStart + 1000);
    EXPECT_EQ(count, 0);
    timer->Stop();
    timer->Stop();
    RunAt(fStart + 10000);
    EXPECT_EQ(count, 0);
    timer->Start(1000);
    timer = nullptr;
    RunAt(fStart + 20000);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(EventLoop::Deadline(), B_INFINITE_TIMEOUT);
}

TEST_F(TimerTest, RefusesIntervalsThatAreNone)
{
    Timer timer([] {});
    timer.Start(1000);
    EXPECT_EQ(timer.Start(0), B_BAD_VALUE);
    EXPECT_FALSE(timer.IsRunning());
    EXPECT_EQ(timer.Start(-1), B_BAD_VALUE);
    EXPECT_EQ(timer.Start(B_INFINITE_TIMEOUT), B_OK);
    EXPECT_EQ(EventLoop::Deadline(), B_INFINITE_TIMEOUT);
    RunAt(B_INFINITE_TIMEOUT - 1);
}

TEST_F(TimerTest, CallsInTheOrderOfTheirTimes)
{
    std::string order;
    Timer late([&order] { order += "late "; });
    Timer early([&order] { order += "early "; });
    Timer never([&order] { order += "never "; });
    late.Start(3000, false);
    early.Start(2000, false);
    never.Start(5000, false);
    RunAt(fStart + 4000);
    EXPECT_EQ(order, "early late ");
}

TEST_F(TimerTest, MayBeChangedInItsCall)
{
    int count = 0;
    auto destroyed = std::make_unique<Timer>([] {});
    destroyed = std::make_unique<Timer>([&] {
        ++count;
        destroyed = nullptr;
        ++count;
    });
    destroyed->Start(1000);
    Timer stopped([&stopped, &count] {
        ++count;
        stopped.Stop();
    });
    stopped.Start(1000);
    Timer restarted([&restarted, &count] {
        ++count;
        restarted.Start(50);
    });
    restarted.Start(1000);
    RunAt(fStart + 1000);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(destroyed, nullptr);
    EXPECT_FALSE(stopped.IsRunning());
    EXPECT_EQ(EventLoop::Deadline(), fStart + 1050);
}

TEST_F(TimerTest, MayDestroyAnotherThatIsDue)
{
    auto other = std::make_unique<Timer>([] { FAIL(); });
    Timer timer([&other] { other = nullptr; });
    timer.Start(1000, false);
    other->Start(1001, false);
    RunAt(fStart + 2000);
    EXPECT_EQ(other, nullptr);
}

TEST_F(TimerTest, RunsInNestedLoopsButNotInItsOwnCall)
{
    int count = 0, others = 0;
    Timer timer([&] {
        ++count;
        const kits::NestedLoop nested(nullptr);
        RunAt(fClock.now + 10000);
        EXPECT_EQ(EventLoop::Deadline(), fStart + 20000);
    });
    Timer other([&others] { ++others; });
    timer.Start(1000);
    other.Start(10000);
    RunAt(fStart + 1000);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(others, 1);
}

TEST(Timer, WakesTheLoopWhenAnotherThreadStartsIt)
{
    std::atomic<int> count = 0;
    std::unique_ptr<Timer> timer;
    std::thread thread([&] {
        const kits::InterfaceLocker locker;
        timer = std::make_unique<Timer>([&count] {
            EXPECT_TRUE(kits::IsMainThread());
            EXPECT_TRUE(kits::InterfaceLock::Get().IsHeld());
            ++count;
        });
        timer->Start(1);
    });
    EXPECT_TRUE(test::RunUntil([&count] { return count >= 3; }));
    thread.join();
    const kits::InterfaceLocker locker;
    timer = nullptr;
}
