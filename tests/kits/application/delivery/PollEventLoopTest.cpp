// SPDX-License-Identifier: MIT
#include "kits/application/delivery/PollEventLoop.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/application/Timer.h"
#include "kits/kernel/Errors.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>

#include <atomic>

using kits::EventLoop;
using kits::InterfaceLock;
using test::RecordingLooper;

namespace {

class OtherLoop : public EventLoop {
public:
    void Run() override {}
    void Quit() override {}
};

EventLoop& Loop()
{
    return EventLoop::Current();
}

} // namespace

TEST(EventLoop, IsThePollLoopUnlessAnotherIsInstalled)
{
    EventLoop& first = EventLoop::Current();
    EXPECT_NE(dynamic_cast<kits::PollEventLoop*>(&first), nullptr);
    OtherLoop other;
    EventLoop::SetCurrent(&other);
    EXPECT_EQ(&EventLoop::Current(), &other);
    EventLoop::SetCurrent(nullptr);
    EXPECT_EQ(&EventLoop::Current(), &first);
}

TEST(EventLoop, CountsWhatIsHandledWithoutTheLock)
{
    const uint64 before = EventLoop::CountUnlockedEvents();
    {
        const kits::InterfaceLocker locker;
        EventLoop::NoteEvent();
    }
    EXPECT_EQ(EventLoop::CountUnlockedEvents(), before);
    EventLoop::NoteEvent();
    EXPECT_EQ(EventLoop::CountUnlockedEvents(), before + 1);
}

TEST(PollEventLoop, RunsUntilItIsToldToQuit)
{
    int count = 0;
    kits::RunOnMainThread([&count] {
        ++count;
        Loop().Quit();
        ++count;
    });
    kits::RunOnMainThread([&count] { ++count; });
    Loop().Run();
    EXPECT_EQ(count, 3);
    EXPECT_FALSE(InterfaceLock::Get().IsHeld());
    // Outside of Run() it has no effect, not even on a later one.
    Loop().Quit();
    kits::RunOnMainThread([&count] {
        ++count;
        Loop().Quit();
    });
    Loop().Run();
    EXPECT_EQ(count, 4);
}

TEST(PollEventLoop, IsWokenByAnotherThread)
{
    std::thread thread;
    kits::RunOnMainThread([&thread] {
        thread = std::thread([] {
            // The main thread has the lock while it runs anything, and releases it when it waits.
            EXPECT_EQ(InterfaceLock::Get().Lock(), B_OK);
            InterfaceLock::Get().Unlock();
            kits::RunOnMainThread([] { Loop().Quit(); });
        });
    });
    Loop().Run();
    thread.join();
}

TEST(PollEventLoop, QuitsTheInnermostRun)
{
    std::string order;
    kits::RunOnMainThread([&order] {
        order += "outer ";
        kits::RunOnMainThread([&order] {
            order += "inner ";
            Loop().Quit();
        });
        EXPECT_EQ(kits::NestedLoop::Count(), 0);
        Loop().Run();
        order += "back ";
        kits::RunOnMainThread([&order] {
            order += "again ";
            Loop().Quit();
        });
    });
    Loop().Run();
    EXPECT_EQ(order, "outer inner back again ");
}

TEST(PollEventLoop, DispatchesAllLoopersInNestedRuns)
{
    auto* other = new RecordingLooper;
    auto* looper = new RecordingLooper([other](BMessage* message) {
        if (message->what != 1)
            return;
        Loop().Run();
        EXPECT_EQ(other->codes, (std::vector<uint32>{2, 4}));
    });
    other->Run();
    looper->Run();
    looper->PostMessage(1);
    other->PostMessage(2);
    looper->PostMessage(3);
    other->PostMessage(4);
    kits::Timer timer([] { Loop().Quit(); });
    {
        const kits::InterfaceLocker locker;
        timer.Start(1000, false);
    }
    EXPECT_TRUE(test::RunUntil([looper] { return looper->codes.size() == 2; }));
    EXPECT_EQ(looper->codes, (std::vector<uint32>{1, 3}));
    const kits::InterfaceLocker locker;
    looper->Quit();
    other->Quit();
}

TEST(PollEventLoop, HoldsTheLockAsDeepAsBeforeWhereverItRuns)
{
    InterfaceLock& lock = InterfaceLock::Get();
    std::atomic<int> taken = 0;
    std::atomic<bool> ends = false;
    std::thread thread([&] {
        while (!ends) {
            const kits::InterfaceLocker locker;
            ++taken;
        }
    });
    const uint64 unlocked = EventLoop::CountUnlockedEvents();
    int countBack = 0;
    RecordingLooper* looper = nullptr;
    looper = new RecordingLooper([&](BMessage* message) {
        const int32 depth = lock.Depth();
        EXPECT_GT(depth, 0);
        if (message->what == 0)
            return;
        lock.Lock();
        looper->PostMessage(message->what - 1);
        const size_t before = looper->codes.size();
        const int takenBefore = taken;
        kits::Timer timer([&] {
            EXPECT_TRUE(lock.IsHeld());
            if (taken > takenBefore + 3 && looper->codes.size() > before)
                Loop().Quit();
        });
        timer.Start(100);
        Loop().Run();
        EXPECT_EQ(lock.Depth(), depth + 1);
        lock.Unlock();
        ++countBack;
    });
    looper->Run();
    looper->PostMessage(3);
    EXPECT_TRUE(test::RunUntil([&countBack] { return countBack == 3; }));
    ends = true;
    thread.join();
    EXPECT_EQ(looper->codes, (std::vector<uint32>{3, 2, 1, 0}));
    EXPECT_EQ(EventLoop::CountUnlockedEvents(), unlocked);
    const kits::InterfaceLocker locker;
    looper->Quit();
}
