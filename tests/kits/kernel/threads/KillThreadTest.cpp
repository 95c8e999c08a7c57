// SPDX-License-Identifier: MIT
#include "kits/kernel/Errors.h"
#include "kits/kernel/Threads.h"
#include "kits/kernel/WaitPoint.h"
#include "tests/kits/kernel/threads/TestThreads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <vector>

using test::Await;
using test::TestThread;

namespace {

/// Counts its destructions.
class Guarded {
public:
    explicit Guarded(std::atomic<int>& count)
        : fCount(count)
    {
    }
    ~Guarded() { ++fCount; }

private:
    std::atomic<int>& fCount;
};

} // namespace

TEST(KillThreadTest, EndsASleepAndUnwindsTheStack)
{
    std::atomic<int> destroyed = 0;
    std::atomic<bool> isPast = false;
    TestThread thread([&] {
        Guarded outer(destroyed);
        Guarded inner(destroyed);
        snooze(B_INFINITE_TIMEOUT);
        isPast = true;
        return 0;
    });
    thread.Start();
    ASSERT_TRUE(thread.AwaitState(B_THREAD_ASLEEP));
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
    EXPECT_EQ(destroyed, 2) << "the thread is gone when the call returns";
    EXPECT_FALSE(isPast);
    EXPECT_TRUE(thread.IsGone());
}

TEST(KillThreadTest, EndsAWait)
{
    kits::WaitPoint point;
    std::atomic<int> destroyed = 0;
    TestThread thread([&] {
        Guarded guarded(destroyed);
        kits::WaitPoint::Guard guard = point.Hold();
        return point.Wait(guard, [] { return false; });
    });
    thread.Start();
    ASSERT_TRUE(thread.AwaitState(B_THREAD_WAITING));
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
    EXPECT_EQ(destroyed, 1);
    EXPECT_FALSE(point.HasWaiters(point.Hold()));
}

TEST(KillThreadTest, EndsAWaitWhoseConditionIsTrue)
{
    kits::WaitPoint point;
    std::atomic<bool> hasBegun = false;
    TestThread thread([&]() -> int32 {
        while (true) {
            kits::WaitPoint::Guard guard = point.Hold();
            point.Wait(guard, [] { return true; });
            hasBegun = true;
        }
    });
    thread.Start();
    ASSERT_TRUE(Await([&] { return hasBegun.load(); }));
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
}

TEST(KillThreadTest, LeavesAThreadAloneBetweenWaits)
{
    BusyThread busy;
    TestThread killer([&] { return kill_thread(busy.Thread().Id()); });
    killer.Start();
    ASSERT_TRUE(killer.AwaitState(B_THREAD_WAITING));
    EXPECT_FALSE(busy.Thread().IsGone());
    busy.GoOn();
    killer.Join();
    EXPECT_EQ(busy.Step(), 2);
}

TEST(KillThreadTest, OneThatNeverStartedIsGoneWithoutRunning)
{
    std::atomic<bool> hasRun = false;
    TestThread thread([&] {
        hasRun = true;
        return 0;
    });
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
    EXPECT_TRUE(thread.IsGone());
    EXPECT_FALSE(hasRun);
}

TEST(KillThreadTest, EndsASuspendedOne)
{
    std::atomic<int> destroyed = 0;
    SleepingThread thread(&destroyed);
    suspend_thread(thread.Id());
    ASSERT_TRUE(thread.AwaitState(B_THREAD_SUSPENDED));
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
    EXPECT_EQ(destroyed, 1);
}

TEST(KillThreadTest, OfItselfItReturnsAndTheThreadGoesOn)
{
    std::atomic<int> steps = 0;
    TestThread thread([&] {
        EXPECT_EQ(kill_thread(find_thread(nullptr)), B_OK);
        ++steps;
        snooze(1000);
        ++steps;
        return 5;
    });
    status_t status = 0;
    EXPECT_EQ(thread.Join(&status), B_OK);
    EXPECT_EQ(steps, 2);
    EXPECT_EQ(status, 5);
}

TEST(KillThreadTest, OfItselfWorksInADestructor)
{
    struct KillsItself {
        ~KillsItself() { kill_thread(find_thread(nullptr)); }
    };
    TestThread thread([] {
        std::make_unique<KillsItself>().reset();
        return 3;
    });
    status_t status = 0;
    EXPECT_EQ(thread.Join(&status), B_OK);
    EXPECT_EQ(status, 3);
}

TEST(KillThreadTest, GivesInterruptedToWhoWaits)
{
    SleepingThread thread;
    status_t seen = 0;
    TestThread waiter([&] { return wait_for_thread(thread.Id(), &seen); });
    waiter.Start();
    ASSERT_TRUE(waiter.AwaitState(B_THREAD_WAITING));
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
    ASSERT_TRUE(Await([&] { return waiter.IsGone(); }));
    EXPECT_EQ(seen, B_INTERRUPTED);
}

TEST(KillThreadTest, OfAThreadThatWaitsForAnother)
{
    SleepingThread endless;
    TestThread waiter([&] { return wait_for_thread(endless.Id(), nullptr); });
    waiter.Start();
    ASSERT_TRUE(waiter.AwaitState(B_THREAD_WAITING));
    EXPECT_EQ(kill_thread(waiter.Id()), B_OK);
    EXPECT_FALSE(endless.IsGone());
    EXPECT_EQ(kill_thread(endless.Id()), B_OK);
}

TEST(KillThreadTest, ByManyAtOnceReturnsForAll)
{
    std::atomic<int> destroyed = 0;
    SleepingThread thread(&destroyed);
    std::atomic<int> returned = 0;
    std::vector<std::unique_ptr<TestThread>> killers;
    for (int i = 0; i < 4; ++i) {
        killers.push_back(std::make_unique<TestThread>([&] {
            const status_t status = kill_thread(thread.Id());
            EXPECT_TRUE(status == B_OK || status == B_BAD_THREAD_ID);
            EXPECT_EQ(destroyed, 1);
            return ++returned;
        }));
        killers.back()->Start();
    }
    EXPECT_TRUE(Await([&] { return returned == 4; }));
}

TEST(KillThreadTest, TwoThatKillEachOtherBothEnd)
{
    for (int round = 0; round < 50; ++round) {
        std::atomic<thread_id> firstId = -1;
        std::atomic<thread_id> secondId = -1;
        const auto killThenSleep = [](const std::atomic<thread_id>& other) {
            return [&other]() -> int32 {
                kill_thread(other);
                snooze(B_INFINITE_TIMEOUT);
                return 0;
            };
        };
        TestThread first(killThenSleep(secondId));
        TestThread second(killThenSleep(firstId));
        firstId = first.Id();
        secondId = second.Id();
        first.Start();
        second.Start();
        // One may have ended before it could kill the other, which then is left to the destructor.
        EXPECT_TRUE(Await([&] { return first.IsGone() || second.IsGone(); }));
    }
}

TEST(KillThreadTest, AShieldPutsItOff)
{
    std::atomic<int> steps = 0;
    std::atomic<thread_id> id = -1;
    TestThread killer([&] { return kill_thread(id); });
    TestThread thread([&] {
        {
            kits::KillShield shield;
            kits::KillShield nested;
            ++steps;
            EXPECT_TRUE(killer.AwaitState(B_THREAD_WAITING));
            snooze(1000);
            ++steps;
        }
        snooze(1000);
        ++steps;
        return 0;
    });
    id = thread.Id();
    thread.Start();
    ASSERT_TRUE(Await([&] { return steps == 1; }));
    EXPECT_EQ(killer.Join(), B_OK);
    EXPECT_EQ(steps, 2);
}

TEST(KillThreadTest, AWaitWhileAnotherErrorIsOnItsWayDoesNotThrow)
{
    struct SleepsAtItsEnd {
        ~SleepsAtItsEnd()
        {
            isUnwinding = true;
            EXPECT_TRUE(killer.AwaitState(B_THREAD_WAITING));
            snooze(1000);
        }
        std::atomic<bool>& isUnwinding;
        const TestThread& killer;
    };
    std::atomic<bool> isUnwinding = false;
    std::atomic<bool> isCaught = false;
    std::atomic<thread_id> id = -1;
    TestThread killer([&] { return kill_thread(id); });
    TestThread thread([&] {
        try {
            const SleepsAtItsEnd sleeps{isUnwinding, killer};
            throw std::runtime_error("an error");
        } catch (const std::runtime_error&) {
            isCaught = true;
        }
        snooze(1000);
        ADD_FAILURE() << "killed by now";
        return 0;
    });
    id = thread.Id();
    thread.Start();
    ASSERT_TRUE(Await([&] { return isUnwinding.load(); }));
    EXPECT_EQ(killer.Join(), B_OK);
    EXPECT_TRUE(isCaught);
}

TEST(KillThreadTest, AHandlerOfEverythingOnlyDelaysIt)
{
    std::atomic<int> caught = 0;
    TestThread thread([&] {
        try {
            snooze(B_INFINITE_TIMEOUT);
        } catch (...) {
            ++caught;
        }
        snooze(B_INFINITE_TIMEOUT);
        return 0;
    });
    thread.Start();
    ASSERT_TRUE(thread.AwaitState(B_THREAD_ASLEEP));
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
    EXPECT_EQ(caught, 1);
}

TEST(KillThreadTest, AtAnyMoment)
{
    for (int round = 0; round < 200; ++round) {
        std::atomic<int> alive = 0;
        TestThread thread([&]() -> int32 {
            while (true) {
                auto counted = std::make_unique<int>(++alive);
                snooze(1000);
                --alive;
            }
        });
        thread.Start();
        if (round % 2 == 0)
            std::this_thread::yield();
        EXPECT_EQ(kill_thread(thread.Id()), B_OK);
        EXPECT_LE(alive, 1);
    }
}
