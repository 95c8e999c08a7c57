// SPDX-License-Identifier: MIT
#include "kits/kernel/Errors.h"
#include "kits/kernel/Threads.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <string>

using test::Await;
using test::TestThread;

TEST(ThreadTest, StartsSuspendedAndRunsWhenResumed)
{
    std::atomic<int> runs = 0;
    TestThread thread([&] { return ++runs; });
    ASSERT_GT(thread.Id(), 0);
    EXPECT_EQ(thread.State(), B_THREAD_SUSPENDED);
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(thread.Start(), B_OK);
    EXPECT_TRUE(Await([&] { return thread.IsGone(); }));
    EXPECT_EQ(runs, 1);
}

TEST(ThreadTest, GivesItsExitStatusToWhoWaits)
{
    TestThread thread([] { return 42; });
    status_t status = 0;
    EXPECT_EQ(thread.Join(&status), B_OK) << "waiting starts a new thread";
    EXPECT_EQ(status, 42);
}

TEST(ThreadTest, GivesItsExitStatusToAllWhoWait)
{
    std::atomic<bool> mayEnd = false;
    TestThread thread([&] { return Await([&] { return mayEnd.load(); }) ? 7 : 0; });
    const auto join = [&] {
        status_t status = 0;
        return thread.Join(&status) == B_OK ? status : -1;
    };
    TestThread first(join);
    TestThread second(join);
    first.Start();
    second.Start();
    ASSERT_TRUE(first.AwaitState(B_THREAD_WAITING));
    ASSERT_TRUE(second.AwaitState(B_THREAD_WAITING));
    mayEnd = true;
    status_t status = 0;
    if (first.Join(&status) == B_OK)
        EXPECT_EQ(status, 7);
    if (second.Join(&status) == B_OK)
        EXPECT_EQ(status, 7);
}

TEST(ThreadTest, DeadIdIsBadEverywhere)
{
    TestThread thread([] { return 0; });
    ASSERT_EQ(thread.Join(), B_OK);
    thread_info info;
    EXPECT_EQ(get_thread_info(thread.Id(), &info), B_BAD_THREAD_ID);
    EXPECT_EQ(resume_thread(thread.Id()), B_BAD_THREAD_ID);
    EXPECT_EQ(suspend_thread(thread.Id()), B_BAD_THREAD_ID);
    EXPECT_EQ(kill_thread(thread.Id()), B_BAD_THREAD_ID);
    EXPECT_EQ(wait_for_thread(thread.Id(), nullptr), B_BAD_THREAD_ID);
    EXPECT_EQ(kill_thread(-1), B_BAD_THREAD_ID);
    EXPECT_EQ(kill_thread(0), B_BAD_THREAD_ID);
}

TEST(ThreadTest, IdsAreNeverUsedTwice)
{
    thread_id last = find_thread(nullptr);
    for (int i = 0; i < 50; ++i) {
        TestThread thread([] { return 0; });
        EXPECT_GT(thread.Id(), last);
        last = thread.Id();
        thread.Join();
    }
}

TEST(ThreadTest, KeepsItsWholeName)
{
    const char* name = "ChartView: Waiting for Qel server...";
    std::string systemName;
    TestThread thread(
        [&] {
            char buffer[64];
            pthread_getname_np(pthread_self(), buffer, sizeof(buffer));
            systemName = buffer;
            return 0;
        },
        name, 5);
    thread_info info;
    ASSERT_EQ(get_thread_info(thread.Id(), &info), B_OK);
    EXPECT_EQ(info.name, name);
    EXPECT_EQ(info.thread, thread.Id());
    EXPECT_EQ(info.priority, 5);
    EXPECT_EQ(find_thread(name), thread.Id());
    thread.Join();
    EXPECT_EQ(systemName, "ChartView: Wait");
    EXPECT_EQ(find_thread(name), B_NAME_NOT_FOUND);
}

TEST(ThreadTest, FindsTheOldestOfAName)
{
    TestThread first([] { return 0; }, "twin");
    TestThread second([] { return 0; }, "twin");
    EXPECT_EQ(find_thread("twin"), first.Id());
    kill_thread(first.Id());
    EXPECT_EQ(find_thread("twin"), second.Id());
}

TEST(ThreadTest, KnowsItself)
{
    thread_id inside = -1;
    TestThread thread([&] {
        inside = find_thread(nullptr);
        return 0;
    });
    thread.Join();
    EXPECT_EQ(inside, thread.Id());
}

TEST(ThreadTest, RefusesBadArguments)
{
    EXPECT_EQ(spawn_thread(nullptr, "x", 10, nullptr), B_BAD_VALUE);
    EXPECT_EQ(get_thread_info(find_thread(nullptr), nullptr), B_BAD_VALUE);
    TestThread nameless([] { return 0; }, nullptr, -5);
    thread_info info;
    ASSERT_EQ(get_thread_info(nameless.Id(), &info), B_OK);
    EXPECT_EQ(info.name, "");
    EXPECT_EQ(info.priority, 1);
}

TEST(ThreadTest, ResumingARunningThreadIsAnError)
{
    TestThread thread([] {
        snooze(B_INFINITE_TIMEOUT);
        return 0;
    });
    EXPECT_EQ(thread.Start(), B_OK);
    EXPECT_EQ(thread.Start(), B_BAD_THREAD_STATE);
}

TEST(ThreadTest, WaitingForItselfIsAnError)
{
    TestThread thread([] { return wait_for_thread(find_thread(nullptr), nullptr); });
    status_t status = 0;
    thread.Join(&status);
    EXPECT_EQ(status, B_BAD_VALUE);
}

TEST(ThreadTest, ReportsWhatItDoes)
{
    std::atomic<bool> isOver = false;
    TestThread thread([&] {
        while (!isOver) {
        }
        snooze(B_INFINITE_TIMEOUT);
        return 0;
    });
    thread.Start();
    EXPECT_EQ(thread.State(), B_THREAD_RUNNING);
    isOver = true;
    EXPECT_TRUE(thread.AwaitState(B_THREAD_ASLEEP));
}

TEST(ThreadTest, ThreadsOfOthersHaveIdsAndCanWaitButNotBeEnded)
{
    const thread_id self = find_thread(nullptr);
    EXPECT_GT(self, 0);
    EXPECT_EQ(find_thread(nullptr), self);
    thread_info info;
    ASSERT_EQ(get_thread_info(self, &info), B_OK);
    EXPECT_EQ(info.state, B_THREAD_RUNNING);

    thread_id other = -1;
    std::thread([&] {
        other = find_thread(nullptr);
        EXPECT_EQ(snooze(1), B_OK);
        TestThread killer([&] { return kill_thread(other); });
        status_t status = 0;
        EXPECT_EQ(killer.Join(&status), B_OK);
        EXPECT_EQ(status, B_NOT_ALLOWED);
        EXPECT_EQ(suspend_thread(other), B_NOT_ALLOWED);
        EXPECT_EQ(wait_for_thread(self, nullptr), B_NOT_ALLOWED);
        EXPECT_EQ(kill_thread(other), B_NOT_ALLOWED);
    }).join();
    EXPECT_GT(other, self);
    EXPECT_EQ(get_thread_info(other, &info), B_BAD_THREAD_ID) << "it is forgotten with its end";
}

TEST(ThreadTest, SleepsAtLeastAMillisecond)
{
    using namespace std::chrono;
    for (bigtime_t period : {bigtime_t{999}, bigtime_t{0}, bigtime_t{-5000}, INT64_MIN}) {
        const auto begin = steady_clock::now();
        EXPECT_EQ(snooze(period), B_OK);
        EXPECT_GE(steady_clock::now() - begin, microseconds(1000)) << period;
    }
    const auto begin = steady_clock::now();
    EXPECT_EQ(snooze(3000), B_OK);
    EXPECT_GE(steady_clock::now() - begin, microseconds(3000));
}

TEST(ThreadTest, PrioritiesBecomeNiceLevels)
{
    EXPECT_EQ(kits::NiceForPriority(10), 0);
    EXPECT_EQ(kits::NiceForPriority(5), 5);
    EXPECT_EQ(kits::NiceForPriority(1), 9);
    EXPECT_EQ(kits::NiceForPriority(-100), 9);
    EXPECT_EQ(kits::NiceForPriority(20), -1);
    EXPECT_EQ(kits::NiceForPriority(90), -10);
    EXPECT_EQ(kits::NiceForPriority(120), -13);
    EXPECT_EQ(kits::NiceForPriority(99999), -13);
}

TEST(ThreadTest, ALowPriorityIsSeenByTheSystem)
{
    const int ownNice = getpriority(PRIO_PROCESS, 0);
    int nice = -100;
    int policy = -1;
    TestThread thread(
        [&] {
            nice = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
            sched_param parameters;
            pthread_getschedparam(pthread_self(), &policy, &parameters);
            return 0;
        },
        "low", 5);
    thread.Join();
    EXPECT_EQ(nice, std::min(ownNice + 5, 19));
    EXPECT_EQ(policy, SCHED_OTHER);
}

TEST(ThreadTest, AHighPriorityIsNeverRealTime)
{
    const int ownNice = getpriority(PRIO_PROCESS, 0);
    int nice = 100;
    int policy = -1;
    int niceOfChild = 100;
    TestThread thread(
        [&] {
            nice = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
            sched_param parameters;
            pthread_getschedparam(pthread_self(), &policy, &parameters);
            TestThread child([&] {
                niceOfChild = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
                return 0;
            });
            child.Join();
            return 0;
        },
        "high", B_REAL_TIME_PRIORITY);
    thread.Join();
    EXPECT_LE(nice, ownNice);
    EXPECT_GE(nice, std::max(ownNice - 13, -20));
    EXPECT_EQ(policy, SCHED_OTHER);
    EXPECT_EQ(niceOfChild, ownNice) << "a level counts from the process, not from the thread that made it";
}
