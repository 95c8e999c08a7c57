// SPDX-License-Identifier: MIT
#include "src/sampling/ThreadMagic.h"

#include "kits/kernel/Errors.h"
#include "kits/support/Locker.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <semaphore>

namespace {

/// Work that a test gives as a lambda; reports its deletion.
class Work : public FunctionObject {
public:
    explicit Work(std::function<void()> work, std::atomic<bool>* deleted = nullptr)
        : fWork(std::move(work))
        , fDeleted(deleted)
    {
    }
    ~Work() override
    {
        if (fDeleted != nullptr)
            *fDeleted = true;
    }
    void operator()() override { fWork(); }

private:
    std::function<void()> fWork;
    std::atomic<bool>* fDeleted;
};

std::unique_ptr<FunctionObject> MakeWork(std::function<void()> work, std::atomic<bool>* deleted = nullptr)
{
    return std::make_unique<Work>(std::move(work), deleted);
}

constexpr bigtime_t kHour = 3600LL * 1000000;

void AwaitState(const ThreadPrimitive& thread, thread_state state)
{
    EXPECT_TRUE(test::Await([&] { return thread.State() == state; }));
}

bool IsGone(thread_id thread)
{
    thread_info info;
    return get_thread_info(thread, &info) == B_BAD_THREAD_ID;
}

void AwaitEnd(thread_id thread)
{
    wait_for_thread(thread, nullptr);
    EXPECT_TRUE(IsGone(thread));
}

} // namespace

TEST(OneParamFunctionObject, CallsTheFunctionWithItsArgument)
{
    int calls = 0;
    OneParamFunctionObject<int*> object([](int* count) { ++*count; }, &calls);
    FunctionObject& work = object;
    work();
    work();
    EXPECT_EQ(calls, 2);
}

TEST(ThreadPrimitive, HasNoThreadBeforeItGoes)
{
    FireAndForgetThread thread(MakeWork([] {}), "idle", 10);
    EXPECT_EQ(thread.ThreadID(), -1);
    EXPECT_EQ(thread.State(), thread_state(0));
    EXPECT_EQ(thread.Suspend(), B_BAD_THREAD_ID);
    EXPECT_EQ(thread.Resume(), B_BAD_THREAD_ID);
}

TEST(ThreadPrimitive, GivesNameAndPriorityToTheKernel)
{
    std::binary_semaphore goOn(0);
    auto thread = FireAndForgetThread::Launch(MakeWork([&] { goOn.acquire(); }), "named worker", 7);
    ASSERT_NE(thread, nullptr);
    thread_info info;
    ASSERT_EQ(get_thread_info(thread->ThreadID(), &info), B_OK);
    EXPECT_EQ(info.name, "named worker");
    EXPECT_EQ(info.priority, 7);
    EXPECT_EQ(thread->State(), B_THREAD_RUNNING);
    goOn.release();
}

TEST(ThreadPrimitive, WithoutANameIsUnnamed)
{
    auto* thread = OwnedPeriodicThread::Launch(MakeWork([] {}), kHour, nullptr, 10);
    ASSERT_NE(thread, nullptr);
    EXPECT_EQ(find_thread("Unnamed"), thread->ThreadID());
    thread->Die();
}

TEST(ThreadPrimitive, IsSuspendedAtItsNextSleepAndResumed)
{
    std::atomic<int> calls = 0;
    auto* thread = OwnedPeriodicThread::Launch(MakeWork([&] { calls++; }), 1000, "suspended", 10);
    ASSERT_NE(thread, nullptr);
    EXPECT_EQ(thread->Suspend(), B_OK);
    AwaitState(*thread, B_THREAD_SUSPENDED);
    const int before = calls;
    EXPECT_EQ(thread->Resume(), B_OK);
    EXPECT_TRUE(test::Await([&] { return calls > before; }));
    thread->Die();
}

TEST(OwnedPeriodicThread, PausesBetweenTheCalls)
{
    std::atomic<int> calls = 0;
    auto* thread = OwnedPeriodicThread::Launch(MakeWork([&] { calls++; }), kHour, "periodic", 10);
    ASSERT_NE(thread, nullptr);
    AwaitState(*thread, B_THREAD_ASLEEP);
    EXPECT_EQ(calls, 1);
    thread->Die();
}

TEST(OwnedPeriodicThread, WithoutAPeriodNeverSleeps)
{
    std::atomic<int> calls = 0;
    auto* thread = OwnedPeriodicThread::Launch(MakeWork([&] { calls++; }), 0, "busy", 10);
    ASSERT_NE(thread, nullptr);
    while (calls < 5000)
        ASSERT_EQ(thread->State(), B_THREAD_RUNNING);
    thread->Die();
}

TEST(OwnedPeriodicThread, AskedToQuitFinishesItsCallAndMakesNoOther)
{
    std::atomic<int> calls = 0;
    std::atomic<bool> deleted = false;
    std::binary_semaphore inCall(0);
    std::binary_semaphore goOn(0);
    std::atomic<bool> finished = false;
    auto* thread = OwnedPeriodicThread::Launch(MakeWork(
                                                   [&] {
                                                       calls++;
                                                       inCall.release();
                                                       goOn.acquire();
                                                       finished = true;
                                                   },
                                                   &deleted),
                                               1000, "long call", 10);
    ASSERT_NE(thread, nullptr);
    const thread_id id = thread->ThreadID();
    inCall.acquire();
    thread->RequestToQuit();
    EXPECT_FALSE(finished);
    goOn.release();
    AwaitEnd(id);
    EXPECT_TRUE(finished);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(deleted);
}

TEST(OwnedPeriodicThread, MayAskItselfToQuit)
{
    std::atomic<OwnedPeriodicThread*> self = nullptr;
    std::atomic<int> calls = 0;
    std::binary_semaphore goOn(0);
    self = OwnedPeriodicThread::Launch(MakeWork([&] {
                                           goOn.acquire();
                                           calls++;
                                           self.load()->RequestToQuit();
                                       }),
                                       1000, "quits itself", 10);
    const thread_id id = self.load()->ThreadID();
    goOn.release();
    AwaitEnd(id);
    EXPECT_EQ(calls, 1);
}

TEST(OwnedPeriodicThread, DiesInItsSleep)
{
    std::atomic<bool> deleted = false;
    auto* thread = OwnedPeriodicThread::Launch(MakeWork([] {}, &deleted), kHour, "sleeper", 10);
    ASSERT_NE(thread, nullptr);
    AwaitState(*thread, B_THREAD_ASLEEP);
    const thread_id id = thread->ThreadID();
    thread->Die();
    EXPECT_TRUE(IsGone(id));
    EXPECT_TRUE(deleted);
}

TEST(OwnedPeriodicThread, DiesWaitingForALockOfTheOwner)
{
    BLocker lock("test");
    std::atomic<int> calls = 0;
    {
        lock.Lock();
        auto* thread = OwnedPeriodicThread::Launch(MakeWork([&] {
                                                       lock.Lock();
                                                       calls++;
                                                   }),
                                                   1000, "waiter", 10);
        ASSERT_NE(thread, nullptr);
        AwaitState(*thread, B_THREAD_WAITING);
        thread->Die();
        lock.Unlock();
    }
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(lock.LockWithTimeout(0), B_OK);
    lock.Unlock();
}

TEST(OwnedPeriodicThread, DiesWithoutAPeriodToo)
{
    std::atomic<bool> deleted = false;
    auto* thread = OwnedPeriodicThread::Launch(MakeWork([] {}, &deleted), 0, "busy", 10);
    ASSERT_NE(thread, nullptr);
    thread->Die();
    EXPECT_TRUE(deleted);
}

TEST(OwnedPeriodicThread, KilledFromOutsideLeavesNothingBehind)
{
    std::atomic<bool> deleted = false;
    auto* thread = OwnedPeriodicThread::Launch(MakeWork([] {}, &deleted), kHour, "victim", 10);
    ASSERT_NE(thread, nullptr);
    AwaitState(*thread, B_THREAD_ASLEEP);
    kill_thread(thread->ThreadID());
    EXPECT_TRUE(deleted);
}

TEST(FireAndForgetThread, CallsOnceAndKeepsItsWork)
{
    std::atomic<int> calls = 0;
    std::atomic<bool> deleted = false;
    auto thread = FireAndForgetThread::Launch(MakeWork([&] { calls++; }, &deleted), "once", 10);
    ASSERT_NE(thread, nullptr);
    AwaitEnd(thread->ThreadID());
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(deleted);
    thread.reset();
    EXPECT_TRUE(deleted);
}

TEST(FireAndForgetThread, DoesAllOfItsWorkForWhoJoinsIt)
{
    for (int i = 0; i < 100; i++) {
        bool isDone = false;
        auto thread = FireAndForgetThread::Launch(MakeWork([&] { isDone = true; }), "joined", 10);
        ASSERT_NE(thread, nullptr);
        thread->Join();
        EXPECT_TRUE(isDone);
        thread->Join();
    }
    FireAndForgetThread never(MakeWork([] {}), "never", 10);
    never.Join();
}

TEST(FireAndForgetThread, EndsWhenItIsDeleted)
{
    std::atomic<bool> deleted = false;
    std::atomic<bool> finished = false;
    auto thread = FireAndForgetThread::Launch(MakeWork(
                                                  [&] {
                                                      snooze(kHour);
                                                      finished = true;
                                                  },
                                                  &deleted),
                                              "cut short", 10);
    ASSERT_NE(thread, nullptr);
    AwaitState(*thread, B_THREAD_ASLEEP);
    const thread_id id = thread->ThreadID();
    thread.reset();
    EXPECT_TRUE(IsGone(id));
    EXPECT_FALSE(finished);
    EXPECT_TRUE(deleted);
}

// The sanitizers need address space of their own.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

namespace {

/// Refuses new address space to this process, so that no thread gets a stack.
void RefuseThreads()
{
    std::ifstream statm("/proc/self/statm");
    rlim_t pages = 0;
    statm >> pages;
    const rlim_t bytes = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + 1024 * 1024;
    const rlimit limit{bytes, bytes};
    setrlimit(RLIMIT_AS, &limit);
}

void LaunchRefusedThreads()
{
    RefuseThreads();
    std::atomic<bool> deleted = false;
    bool good = OwnedPeriodicThread::Launch(MakeWork([] {}, &deleted), kHour, "refused", 10) == nullptr && deleted;
    deleted = false;
    good = good && FireAndForgetThread::Launch(MakeWork([] {}, &deleted), "refused", 10) == nullptr && deleted;
    FireAndForgetThread thread(MakeWork([] {}), "refused", 10);
    const thread_id result = thread.Go();
    good = good && result < 0 && thread.ThreadID() == result;
    std::exit(good ? 0 : 1);
}

} // namespace

TEST(ThreadPrimitiveDeathTest, ARefusedThreadLeavesItsErrorAndNothingElse)
{
    // A fresh process: it has no stack of an ended thread to reuse.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(LaunchRefusedThreads(), testing::ExitedWithCode(0), "");
}

#endif
