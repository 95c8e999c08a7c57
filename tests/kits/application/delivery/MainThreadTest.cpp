// SPDX-License-Identifier: MIT
#include "kits/application/MainThread.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/delivery/MainThreadPrivate.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>

using kits::EventLoop;
using kits::NestedLoop;

TEST(MainThread, IsTheOneTheProcessStartedWith)
{
    EXPECT_TRUE(kits::IsMainThread());
    EXPECT_EQ(kits::MainThreadId(), find_thread(nullptr));
    std::thread([] { EXPECT_FALSE(kits::IsMainThread()); }).join();
}

TEST(MainThread, RunsActionsInTheirOrderUnderTheLock)
{
    std::string order;
    std::thread([&order] {
        for (const char* name : {"a", "b", "c"})
            kits::RunOnMainThread([&order, name] {
                EXPECT_TRUE(kits::IsMainThread());
                EXPECT_TRUE(kits::InterfaceLock::Get().IsHeld());
                EXPECT_FALSE(kits::IsOutermost());
                order += name;
            });
    }).join();
    EXPECT_EQ(order, "");
    EXPECT_TRUE(test::RunUntil([&order] { return order.size() == 3; }));
    EXPECT_EQ(order, "abc");
}

TEST(MainThread, LeavesWhatComesMeanwhileForTheNextTurn)
{
    const kits::InterfaceLocker locker;
    int count = 0;
    std::function<void()> again = [&] {
        ++count;
        if (count < 5)
            kits::RunOnMainThread(again);
    };
    kits::RunOnMainThread(again);
    EventLoop::RunDue();
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(test::RunUntil([&count] { return count == 5; }));
}

TEST(MainThread, RunsActionsForTheOutermostLoopLaterAndInTheirOrder)
{
    const kits::InterfaceLocker locker;
    std::string order;
    EXPECT_TRUE(kits::IsOutermost());
    kits::RunAtOutermostLoop([&order] {
        EXPECT_TRUE(kits::IsOutermost());
        EXPECT_TRUE(kits::InterfaceLock::Get().IsHeld());
        order += "1";
        kits::RunAtOutermostLoop([&order] { order += "3"; });
    });
    kits::RunAtOutermostLoop([&order] { order += "2"; });
    EXPECT_EQ(order, "");
    EventLoop::RunDue();
    EXPECT_EQ(order, "123");
}

TEST(MainThread, DestroysNothingUnderAMessage)
{
    std::string order;
    auto* looper = new test::RecordingLooper([&order](BMessage* message) {
        if (message->what != 1)
            return;
        kits::RunAtOutermostLoop([&order] { order += "outermost "; });
        kits::RunOnMainThread([&order] { order += "soon "; });
        EventLoop::RunDue();
        order += "dispatched ";
    });
    looper->Run();
    looper->PostMessage(1);
    EXPECT_TRUE(test::RunUntil([&order] { return order.size() > 20; }));
    EXPECT_EQ(order, "soon dispatched outermost ");
    const kits::InterfaceLocker locker;
    looper->Quit();
}

TEST(NestedLoop, IsToldToEndBeforeWhatDestroysRuns)
{
    const kits::InterfaceLocker locker;
    std::string order;
    {
        NestedLoop menu([&order] { order += "menu "; });
        EXPECT_EQ(NestedLoop::Count(), 1);
        {
            NestedLoop alert([&order] { order += "alert "; });
            EXPECT_EQ(NestedLoop::Count(), 2);
            EXPECT_FALSE(kits::IsOutermost());
            std::thread([&order] { kits::RunAtOutermostLoop([&order] { order += "destroyed "; }); }).join();
            EXPECT_FALSE(alert.WasCanceled());
            EventLoop::RunDue();
            EXPECT_TRUE(alert.WasCanceled());
            EXPECT_TRUE(menu.WasCanceled());
            EventLoop::RunDue();
        }
        EventLoop::RunDue();
        // A loop that begins on the way out is cancelled too.
        NestedLoop late([&order] { order += "late "; });
        EventLoop::RunDue();
        EXPECT_TRUE(late.WasCanceled());
    }
    EXPECT_EQ(order, "alert menu late ");
    EXPECT_EQ(NestedLoop::Count(), 0);
    EventLoop::RunDue();
    EXPECT_EQ(order, "alert menu late destroyed ");
}

TEST(NestedLoop, IsWokenToHearOfIt)
{
    // A real loop that blocks, with no other reason to wake.
    int state = 0;
    kits::RunOnMainThread([&state] {
        kits::RunAtOutermostLoop([&state] {
            EXPECT_EQ(state, 1);
            state = 2;
            EventLoop::Current().Quit();
        });
        EventLoop::RunDue();
        EventLoop::Current().Run();
        EXPECT_EQ(state, 0);
        state = 1;
    });
    EventLoop::Current().Run();
    EXPECT_EQ(state, 2);
}

TEST(NestedLoop, PutsTheDepthOfTheLockBack)
{
    kits::InterfaceLock& lock = kits::InterfaceLock::Get();
    lock.Lock();
    lock.Lock();
    {
        const NestedLoop nested(nullptr);
        lock.ReleaseAll();
    }
    EXPECT_EQ(lock.Depth(), 2);
    {
        const NestedLoop nested(nullptr);
        lock.Lock();
        lock.Lock();
    }
    EXPECT_EQ(lock.Depth(), 2);
    lock.ReleaseAll();
    {
        const NestedLoop nested(nullptr);
        lock.Lock();
    }
    EXPECT_EQ(lock.Depth(), 0);
}

TEST(LeftOverActions, RunOnceAndNotThoseThatTheyCause)
{
    const kits::InterfaceLocker locker;
    int countSoon = 0, countOutermost = 0;
    std::function<void()> soon = [&] {
        ++countSoon;
        kits::RunOnMainThread(soon);
    };
    std::function<void()> outermost = [&] {
        ++countOutermost;
        kits::RunAtOutermostLoop(outermost);
        kits::RunOnMainThread([&countSoon] { ++countSoon; });
    };
    kits::RunOnMainThread(soon);
    kits::RunAtOutermostLoop(outermost);
    kits::RunLeftOverActions();
    EXPECT_EQ(countSoon, 1);
    EXPECT_EQ(countOutermost, 1);
    EXPECT_TRUE(kits::HasActionsToRun());
    // From now on they queue nothing new; only waiting actions are left.
    soon = outermost = [] {};
    for (int rounds = 0; rounds < 3; ++rounds)
        kits::RunLeftOverActions();
    EXPECT_FALSE(kits::HasActionsToRun());
}

TEST(NestedLoop, MayCancelWithoutACallback)
{
    const NestedLoop nested(nullptr);
    NestedLoop::CancelAll();
    EXPECT_TRUE(nested.WasCanceled());
    NestedLoop::CancelAll();
}
