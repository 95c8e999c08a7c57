// SPDX-License-Identifier: MIT
#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/application/Timer.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>

using kits::EventLoop;

namespace {

/// A looper that gets messages of which the newest wins, as samples are, and others.
class OnlyStreamsTest : public testing::Test {
protected:
    OnlyStreamsTest()
    {
        fLooper->Run();
        EventLoop::RunDue();
    }
    ~OnlyStreamsTest() override { fLooper->Quit(); }

    void Post(bool isStream)
    {
        BMessage message(1);
        message.SetNewestWins(isStream);
        EXPECT_EQ(fLooper->PostMessage(&message), B_OK);
    }
    /// Expects that nothing runs but by a whole turn.
    void ExpectRunsInATurnOnly()
    {
        EXPECT_FALSE(EventLoop::RunIfOnlyStreams());
        EXPECT_EQ(fCount, 0);
        EventLoop::RunDue();
        EXPECT_GT(fCount, 0);
    }

    const kits::InterfaceLocker fLocker;
    test::MockClock fClock;
    int fCount = 0;
    test::RecordingLooper* const fLooper = new test::RecordingLooper([this](BMessage*) { fCount++; });
};

} // namespace

TEST_F(OnlyStreamsTest, StreamsRun)
{
    Post(true);
    EXPECT_TRUE(EventLoop::RunIfOnlyStreams());
    EXPECT_EQ(fCount, 1);
}

TEST_F(OnlyStreamsTest, AnotherMessageWaitsForATurn)
{
    Post(false);
    Post(true);
    ExpectRunsInATurnOnly();
}

TEST_F(OnlyStreamsTest, AnActionWaitsForATurn)
{
    Post(true);
    kits::RunOnMainThread([] {});
    ExpectRunsInATurnOnly();
}

TEST_F(OnlyStreamsTest, ATimerWaitsForATurn)
{
    kits::Timer timer([] {});
    timer.Start(1000, false);
    Post(true);
    fClock.now += 1000;
    ExpectRunsInATurnOnly();
}
