// SPDX-License-Identifier: MIT
#include "kits/kernel/Clock.h"
#include "kits/kernel/Errors.h"
#include "kits/kernel/Threads.h"
#include "kits/kernel/WaitPoint.h"
#include "tests/kits/kernel/threads/TestThreads.h"

#include <gtest/gtest.h>

#include <atomic>

using test::Await;
using test::TestThread;

TEST(SuspendThreadTest, StopsASleepingThreadUntilItIsResumed)
{
    std::atomic<int> rounds = 0;
    TestThread thread([&]() -> int32 {
        while (true) {
            ++rounds;
            snooze(1000);
        }
    });
    thread.Start();
    ASSERT_TRUE(Await([&] { return rounds > 3; }));
    EXPECT_EQ(suspend_thread(thread.Id()), B_OK);
    ASSERT_TRUE(thread.AwaitState(B_THREAD_SUSPENDED));
    const int stoppedAt = rounds;
    TestThread other([] { return snooze(3000); });
    ASSERT_EQ(other.Join(), B_OK);
    EXPECT_EQ(rounds, stoppedAt) << "another one has slept longer meanwhile";
    EXPECT_EQ(suspend_thread(thread.Id()), B_OK) << "twice is as once";
    EXPECT_EQ(resume_thread(thread.Id()), B_OK);
    EXPECT_TRUE(Await([&] { return rounds > stoppedAt + 3; }));
    EXPECT_EQ(resume_thread(thread.Id()), B_BAD_THREAD_STATE);
}

TEST(SuspendThreadTest, IsSuspendedAtOnceInASleep)
{
    SleepingThread thread;
    for (int i = 0; i < 100; ++i) {
        suspend_thread(thread.Id());
        ASSERT_EQ(thread.State(), B_THREAD_SUSPENDED);
        resume_thread(thread.Id());
        ASSERT_TRUE(thread.AwaitState(B_THREAD_ASLEEP));
    }
}

TEST(SuspendThreadTest, LeavesAThreadAloneBetweenWaits)
{
    BusyThread busy;
    EXPECT_EQ(suspend_thread(busy.Thread().Id()), B_OK);
    EXPECT_EQ(busy.Thread().State(), B_THREAD_RUNNING);
    busy.GoOn();
    EXPECT_TRUE(busy.Thread().AwaitState(B_THREAD_SUSPENDED));
    EXPECT_EQ(busy.Step(), 2);
    resume_thread(busy.Thread().Id());
    EXPECT_TRUE(busy.AwaitStep(3));
}

TEST(SuspendThreadTest, MayBeTakenBackBeforeItHasEffect)
{
    BusyThread busy;
    EXPECT_EQ(suspend_thread(busy.Thread().Id()), B_OK);
    EXPECT_EQ(resume_thread(busy.Thread().Id()), B_OK);
    busy.GoOn();
    EXPECT_TRUE(Await([&] { return busy.Thread().IsGone(); }));
    EXPECT_EQ(busy.Step(), 3);
}

TEST(SuspendThreadTest, OfItselfStopsHere)
{
    std::atomic<int> steps = 0;
    TestThread thread([&] {
        ++steps;
        suspend_thread(find_thread(nullptr));
        return ++steps;
    });
    thread.Start();
    ASSERT_TRUE(thread.AwaitState(B_THREAD_SUSPENDED));
    EXPECT_EQ(steps, 1);
    resume_thread(thread.Id());
    EXPECT_TRUE(Await([&] { return thread.IsGone(); }));
    EXPECT_EQ(steps, 2);
}

TEST(SuspendThreadTest, ATimeOutRunsOnMeanwhile)
{
    kits::WaitPoint point;
    std::atomic<status_t> result = B_OK;
    TestThread thread([&] {
        kits::WaitPoint::Guard guard = point.Hold();
        result = point.Wait(
            guard, [] { return false; }, 5000);
        return 0;
    });
    thread.Start();
    ASSERT_TRUE(Await([&] {
        const thread_state state = thread.State();
        return state == B_THREAD_WAITING || thread.IsGone();
    }));
    suspend_thread(thread.Id());
    const bigtime_t begin = system_time();
    ASSERT_TRUE(Await([begin] { return system_time() > begin + 5000; }));
    resume_thread(thread.Id());
    EXPECT_TRUE(Await([&] { return result == B_TIMED_OUT; }));
}

TEST(SuspendThreadTest, AWakeGoesToOneThatCanGoOn)
{
    kits::WaitPoint point;
    int tickets = 0;
    std::atomic<int> served = 0;
    const auto takeTicket = [&] {
        kits::WaitPoint::Guard guard = point.Hold();
        point.Wait(guard, [&] { return tickets > 0; });
        --tickets;
        return ++served;
    };
    TestThread first(takeTicket);
    TestThread second(takeTicket);
    first.Start();
    ASSERT_TRUE(first.AwaitState(B_THREAD_WAITING));
    second.Start();
    ASSERT_TRUE(second.AwaitState(B_THREAD_WAITING));
    {
        // Both happen while the first thread cannot run: it finds itself woken and suspended.
        kits::WaitPoint::Guard guard = point.Hold();
        tickets = 1;
        point.WakeOne(guard);
        suspend_thread(first.Id());
    }
    EXPECT_TRUE(Await([&] { return second.IsGone(); }));
    EXPECT_EQ(first.State(), B_THREAD_SUSPENDED);
    {
        kits::WaitPoint::Guard guard = point.Hold();
        tickets = 1;
    }
    resume_thread(first.Id());
    EXPECT_TRUE(Await([&] { return served == 2; })) << "it looks again by itself";
}
