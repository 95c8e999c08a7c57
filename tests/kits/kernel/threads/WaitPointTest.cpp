// SPDX-License-Identifier: MIT
#include "kits/kernel/WaitPoint.h"

#include "kits/kernel/Errors.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <vector>

using test::Await;
using test::TestThread;

TEST(WaitPointTest, DoesNotWaitForWhatIsTrue)
{
    kits::WaitPoint point;
    kits::WaitPoint::Guard guard = point.Hold();
    EXPECT_EQ(point.Wait(
                  guard, [] { return true; }, 0),
              B_OK);
    EXPECT_EQ(point.Wait(guard, [] { return true; }), B_OK);
    EXPECT_TRUE(guard.owns_lock());
}

TEST(WaitPointTest, OnlyLooksWithoutATimeOut)
{
    kits::WaitPoint point;
    kits::WaitPoint::Guard guard = point.Hold();
    EXPECT_EQ(point.Wait(
                  guard, [] { return false; }, 0),
              B_WOULD_BLOCK);
    EXPECT_EQ(point.Wait(
                  guard, [] { return false; }, -1),
              B_WOULD_BLOCK);
    EXPECT_TRUE(guard.owns_lock());
}

TEST(WaitPointTest, TimesOut)
{
    using namespace std::chrono;
    kits::WaitPoint point;
    kits::WaitPoint::Guard guard = point.Hold();
    const auto begin = steady_clock::now();
    EXPECT_EQ(point.Wait(
                  guard, [] { return false; }, 2000),
              B_TIMED_OUT);
    EXPECT_GE(steady_clock::now() - begin, microseconds(2000));
    EXPECT_FALSE(point.HasWaiters(guard));
}

TEST(WaitPointTest, LooksOnceMoreWhenTheTimeIsOver)
{
    kits::WaitPoint point;
    kits::WaitPoint::Guard guard = point.Hold();
    int looks = 0;
    EXPECT_EQ(point.Wait(
                  guard, [&] { return ++looks == 2; }, 1000),
              B_OK);
}

TEST(WaitPointTest, WakesInTheOrderOfComing)
{
    kits::WaitPoint point;
    int turn = 0;
    std::vector<int> order;
    std::vector<std::unique_ptr<TestThread>> threads;
    for (int i = 0; i < 4; ++i) {
        threads.push_back(std::make_unique<TestThread>([&, i] {
            kits::WaitPoint::Guard guard = point.Hold();
            point.Wait(guard, [&] { return turn > 0; });
            --turn;
            order.push_back(i);
            return 0;
        }));
        threads.back()->Start();
        ASSERT_TRUE(threads.back()->AwaitState(B_THREAD_WAITING));
    }
    for (int i = 0; i < 4; ++i) {
        {
            kits::WaitPoint::Guard guard = point.Hold();
            turn = 1;
            point.WakeOne(guard);
        }
        ASSERT_TRUE(Await([&] { return threads[static_cast<size_t>(i)]->IsGone(); }));
    }
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3}));
}

TEST(WaitPointTest, WakesAll)
{
    kits::WaitPoint point(B_THREAD_RECEIVING);
    bool isOpen = false;
    std::vector<std::unique_ptr<TestThread>> threads;
    for (int i = 0; i < 4; ++i) {
        threads.push_back(std::make_unique<TestThread>([&] {
            kits::WaitPoint::Guard guard = point.Hold();
            return point.Wait(guard, [&] { return isOpen; });
        }));
        threads.back()->Start();
        ASSERT_TRUE(threads.back()->AwaitState(B_THREAD_RECEIVING));
    }
    {
        kits::WaitPoint::Guard guard = point.Hold();
        isOpen = true;
        point.WakeAll(guard);
    }
    for (const auto& thread : threads)
        EXPECT_TRUE(Await([&] { return thread->IsGone(); }));
}

TEST(WaitPointTest, AWakeOfAKilledThreadGoesToTheNext)
{
    for (int round = 0; round < 50; ++round) {
        kits::WaitPoint point;
        int tickets = 0;
        const auto takeTicket = [&] {
            kits::WaitPoint::Guard guard = point.Hold();
            point.Wait(guard, [&] { return tickets > 0; });
            return --tickets;
        };
        TestThread first(takeTicket);
        TestThread second(takeTicket);
        first.Start();
        ASSERT_TRUE(first.AwaitState(B_THREAD_WAITING));
        second.Start();
        ASSERT_TRUE(second.AwaitState(B_THREAD_WAITING));
        TestThread killer([&] { return kill_thread(first.Id()); });
        {
            kits::WaitPoint::Guard guard = point.Hold();
            tickets = 1;
            killer.Start();
            // Killed while it cannot run, so it finds itself woken and killed.
            ASSERT_TRUE(killer.AwaitState(B_THREAD_WAITING));
            point.WakeOne(guard);
        }
        EXPECT_TRUE(Await([&] { return second.IsGone() || first.IsGone(); }));
        EXPECT_TRUE(Await([&] { return second.IsGone(); }));
    }
}

TEST(WaitPointTest, TakesAnyCallable)
{
    kits::WaitPoint point;
    kits::WaitPoint::Guard guard = point.Hold();
    struct Ready {
        bool operator()() const { return true; }
    };
    const Ready ready;
    EXPECT_EQ(point.Wait(guard, ready, 0), B_OK);
    EXPECT_EQ(point.Wait(guard, Ready(), 0), B_OK);
}
