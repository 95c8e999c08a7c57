// SPDX-License-Identifier: MIT
#include "kits/application/InterfaceLock.h"

#include "kits/kernel/Errors.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

using kits::InterfaceLock;
using test::KitThread;

namespace {

InterfaceLock& Lock()
{
    return InterfaceLock::Get();
}

class InterfaceLockTest : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(Lock().ReleaseAll(), 0); }
};

} // namespace

TEST_F(InterfaceLockTest, IsHeldAsOftenAsItWasTaken)
{
    EXPECT_FALSE(Lock().IsHeld());
    EXPECT_EQ(Lock().Lock(), B_OK);
    EXPECT_EQ(Lock().Lock(0), B_OK);
    EXPECT_EQ(Lock().Depth(), 2);
    Lock().Unlock();
    EXPECT_TRUE(Lock().IsHeld());
    Lock().Unlock();
    EXPECT_FALSE(Lock().IsHeld());
    Lock().Unlock();
    EXPECT_EQ(Lock().Depth(), 0);
}

TEST_F(InterfaceLockTest, IsHeldByOneThread)
{
    const kits::InterfaceLocker locker;
    KitThread([] {
        EXPECT_FALSE(Lock().IsHeld());
        EXPECT_EQ(Lock().Lock(0), B_WOULD_BLOCK);
        EXPECT_EQ(Lock().Lock(-5), B_WOULD_BLOCK);
        EXPECT_EQ(Lock().Lock(1000), B_TIMED_OUT);
        Lock().Unlock();
        EXPECT_EQ(Lock().ReleaseAll(), 0);
    }).Join();
    EXPECT_EQ(Lock().Depth(), 1);
}

TEST_F(InterfaceLockTest, IsGivenUpWholeAndTakenBackAsDeep)
{
    Lock().Lock();
    Lock().Lock();
    Lock().Lock();
    EXPECT_EQ(Lock().ReleaseAll(), 3);
    KitThread([] {
        EXPECT_EQ(Lock().Lock(), B_OK);
        Lock().Unlock();
    }).Join();
    Lock().Restore(3);
    EXPECT_EQ(Lock().Depth(), 3);
    Lock().Restore(1);
    EXPECT_EQ(Lock().Depth(), 1);
    Lock().Restore(4);
    EXPECT_EQ(Lock().Depth(), 4);
    Lock().Restore(0);
    EXPECT_EQ(Lock().Depth(), 0);
    Lock().Restore(0);
    EXPECT_EQ(Lock().ReleaseAll(), 0);
}

TEST_F(InterfaceLockTest, IsTakenInTheOrderOfComing)
{
    std::vector<int> order; // guarded by the lock
    std::vector<std::unique_ptr<KitThread>> threads;
    {
        const kits::InterfaceLocker locker;
        for (int i = 0; i < 4; ++i) {
            threads.push_back(std::make_unique<KitThread>([&order, i] {
                const kits::InterfaceLocker inner;
                order.push_back(i);
            }));
            ASSERT_TRUE(test::AwaitState(threads.back()->Id(), B_THREAD_WAITING));
        }
    }
    threads.clear();
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(InterfaceLockTest, ComesToWhoWaitsThoughItIsTakenBackAtOnce)
{
    Lock().Lock();
    std::atomic<bool> had = false;
    KitThread thread([&had] {
        const kits::InterfaceLocker locker;
        had = true;
    });
    ASSERT_TRUE(test::AwaitState(thread.Id(), B_THREAD_WAITING));
    int rounds = 0;
    while (!had && rounds < 100) {
        ++rounds;
        Lock().Restore(Lock().ReleaseAll());
        // A thread that only polled the lock now and then would never get it.
        snooze(1000);
    }
    EXPECT_LT(rounds, 100);
    Lock().Unlock();
}

TEST_F(InterfaceLockTest, LetsAWaitingThreadBeKilled)
{
    const kits::InterfaceLocker locker;
    KitThread thread([] {
        Lock().Lock();
        ADD_FAILURE() << "went on";
    });
    ASSERT_TRUE(test::AwaitState(thread.Id(), B_THREAD_WAITING));
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
    EXPECT_EQ(Lock().Depth(), 1);
}

TEST_F(InterfaceLockTest, IsReleasedWhenItsHolderIsKilled)
{
    std::atomic<bool> holds = false;
    KitThread thread([&holds] {
        Lock().Lock();
        Lock().Lock();
        holds = true;
        while (true)
            snooze(1000);
    });
    ASSERT_TRUE(test::Await([&holds] { return holds.load(); }));
    EXPECT_EQ(Lock().Lock(0), B_WOULD_BLOCK);
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
    EXPECT_EQ(Lock().Lock(0), B_OK);
    EXPECT_EQ(Lock().Depth(), 1);
    Lock().Unlock();
}

TEST_F(InterfaceLockTest, IsReleasedWhenItsHolderEnds)
{
    KitThread([] { Lock().Lock(); }).Join();
    EXPECT_EQ(Lock().Lock(), B_OK);
    Lock().Unlock();
    std::thread([] { Lock().Lock(); }).join();
    EXPECT_EQ(Lock().Lock(), B_OK);
    Lock().Unlock();
}

TEST_F(InterfaceLockTest, PassesOverASuspendedThread)
{
    Lock().Lock();
    std::atomic<bool> first = false, second = false;
    KitThread suspended([&first] {
        const kits::InterfaceLocker locker;
        first = true;
    });
    ASSERT_TRUE(test::AwaitState(suspended.Id(), B_THREAD_WAITING));
    EXPECT_EQ(suspend_thread(suspended.Id()), B_OK);
    ASSERT_TRUE(test::AwaitState(suspended.Id(), B_THREAD_SUSPENDED));
    KitThread other([&second] {
        const kits::InterfaceLocker locker;
        second = true;
    });
    ASSERT_TRUE(test::AwaitState(other.Id(), B_THREAD_WAITING));
    Lock().Unlock();
    other.Join();
    EXPECT_TRUE(second);
    EXPECT_FALSE(first);
    EXPECT_EQ(Lock().Lock(), B_OK);
    Lock().Unlock();
    EXPECT_EQ(resume_thread(suspended.Id()), B_OK);
    suspended.Join();
    EXPECT_TRUE(first);
}

TEST_F(InterfaceLockTest, KeepsManyThreadsApart)
{
    int counter = 0; // guarded by the lock
    {
        std::vector<std::unique_ptr<KitThread>> threads;
        for (int i = 0; i < 4; ++i) {
            threads.push_back(std::make_unique<KitThread>([&counter, i] {
                for (int round = 0; round < 500; ++round) {
                    if (Lock().Lock(i % 2 == 0 ? B_INFINITE_TIMEOUT : 500) != B_OK)
                        continue;
                    ++counter;
                    const int32 depth = Lock().ReleaseAll();
                    Lock().Restore(depth);
                    ++counter;
                    Lock().Unlock();
                }
            }));
        }
    }
    EXPECT_GE(counter, 2000);
    EXPECT_EQ(counter % 2, 0);
}
