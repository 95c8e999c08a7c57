// SPDX-License-Identifier: MIT
#include "kits/support/Locker.h"

#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <vector>

using test::Await;
using test::TestThread;

TEST(LockerTest, IsTakenAndGivenUp)
{
    BLocker lock("a lock");
    EXPECT_STREQ(lock.Name(), "a lock");
    EXPECT_FALSE(lock.IsLocked());
    EXPECT_TRUE(lock.Lock());
    EXPECT_TRUE(lock.IsLocked());
    lock.Unlock();
    EXPECT_FALSE(lock.IsLocked());
    EXPECT_STREQ(BLocker().Name(), "some BLocker");
}

TEST(LockerTest, MayBeTakenAgainByItsHolder)
{
    BLocker lock;
    lock.Lock();
    lock.Lock();
    EXPECT_EQ(lock.LockWithTimeout(0), B_OK);
    lock.Unlock();
    lock.Unlock();
    EXPECT_TRUE(lock.IsLocked());
    lock.Unlock();
    EXPECT_FALSE(lock.IsLocked());
    lock.Unlock();
    EXPECT_EQ(lock.LockWithTimeout(0), B_OK);
    EXPECT_TRUE(lock.IsLocked()) << "the call that was one too many was not counted";
    lock.Unlock();
    EXPECT_FALSE(lock.IsLocked());
}

TEST(LockerTest, KeepsOthersOut)
{
    BLocker lock;
    lock.Lock();
    std::vector<status_t> results;
    TestThread other([&] {
        results.push_back(lock.LockWithTimeout(0));
        results.push_back(lock.LockWithTimeout(-1));
        results.push_back(lock.LockWithTimeout(1000));
        EXPECT_FALSE(lock.IsLocked());
        lock.Unlock();
        return 0;
    });
    other.Join();
    EXPECT_EQ(results, (std::vector{B_WOULD_BLOCK, B_WOULD_BLOCK, B_TIMED_OUT}));
    EXPECT_TRUE(lock.IsLocked());
    lock.Unlock();
}

TEST(LockerTest, GoesToWhoWaits)
{
    BLocker lock;
    lock.Lock();
    TestThread other([&] { return lock.Lock() ? 1 : 0; });
    other.Start();
    ASSERT_TRUE(other.AwaitState(B_THREAD_WAITING));
    lock.Unlock();
    EXPECT_TRUE(Await([&] { return other.IsGone(); }));
}

TEST(LockerTest, GuardsWhatItGuards)
{
    BLocker lock;
    int count = 0;
    std::vector<std::unique_ptr<TestThread>> threads;
    for (int i = 0; i < 4; ++i) {
        threads.push_back(std::make_unique<TestThread>([&] {
            for (int round = 0; round < 2000; ++round) {
                lock.Lock();
                ++count;
                lock.Unlock();
            }
            return 0;
        }));
        threads.back()->Start();
    }
    for (const auto& thread : threads)
        thread->Join();
    EXPECT_EQ(count, 8000);
}

TEST(LockerTest, IsReleasedWholeIfItsHolderIsKilled)
{
    BLocker lock;
    TestThread holder([&] {
        lock.Lock();
        lock.Lock();
        snooze(B_INFINITE_TIMEOUT);
        return 0;
    });
    holder.Start();
    ASSERT_TRUE(holder.AwaitState(B_THREAD_ASLEEP));
    EXPECT_EQ(lock.LockWithTimeout(0), B_WOULD_BLOCK);
    kill_thread(holder.Id());
    EXPECT_EQ(lock.LockWithTimeout(0), B_OK);
    lock.Unlock();
    EXPECT_FALSE(lock.IsLocked());
}

TEST(LockerTest, IsReleasedIfItsHolderReturns)
{
    BLocker lock;
    TestThread holder([&] { return lock.Lock() ? 1 : 0; });
    holder.Join();
    EXPECT_EQ(lock.LockWithTimeout(0), B_OK);
    lock.Unlock();
}

TEST(LockerTest, AKilledThreadDoesNotGetIt)
{
    BLocker lock;
    lock.Lock();
    std::atomic<bool> isPast = false;
    TestThread waiter([&] {
        lock.Lock();
        isPast = true;
        return 0;
    });
    waiter.Start();
    ASSERT_TRUE(waiter.AwaitState(B_THREAD_WAITING));
    EXPECT_EQ(kill_thread(waiter.Id()), B_OK);
    EXPECT_FALSE(isPast);
    lock.Unlock();
    EXPECT_FALSE(lock.IsLocked()) << "only this thread's taking counts";
}

TEST(LockerTest, AThreadIsKilledAtTheLockAlsoIfThatIsFree)
{
    BLocker lock;
    std::atomic<int> rounds = 0;
    TestThread thread([&]() -> int32 {
        while (true) {
            lock.Lock();
            ++rounds;
            lock.Unlock();
        }
    });
    thread.Start();
    ASSERT_TRUE(Await([&] { return rounds > 100; }));
    EXPECT_EQ(kill_thread(thread.Id()), B_OK);
    EXPECT_EQ(lock.LockWithTimeout(0), B_OK);
    lock.Unlock();
}

TEST(LockerTest, ASuspendedThreadDoesNotGetIt)
{
    BLocker lock;
    lock.Lock();
    TestThread waiter([&] { return lock.Lock() ? 1 : 0; });
    waiter.Start();
    ASSERT_TRUE(waiter.AwaitState(B_THREAD_WAITING));
    suspend_thread(waiter.Id());
    lock.Unlock();
    // The suspended thread would be first.
    TestThread other([&] { return lock.LockWithTimeout(B_INFINITE_TIMEOUT); });
    status_t status = B_ERROR;
    EXPECT_EQ(other.Join(&status), B_OK);
    EXPECT_EQ(status, B_OK);
    EXPECT_EQ(lock.LockWithTimeout(0), B_OK);
    EXPECT_EQ(waiter.State(), B_THREAD_SUSPENDED);
    lock.Unlock();
    resume_thread(waiter.Id());
    EXPECT_TRUE(Await([&] { return waiter.IsGone(); }));
}

TEST(LockerTest, MayBeDestroyedByItsHolder)
{
    auto lock = std::make_unique<BLocker>("doomed");
    TestThread thread([&] {
        lock->Lock();
        lock.reset();
        return 0;
    });
    EXPECT_EQ(thread.Join(), B_OK);
    EXPECT_EQ(lock, nullptr);
}
