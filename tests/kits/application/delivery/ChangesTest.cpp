// SPDX-License-Identifier: MIT
#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/application/Timer.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>

using kits::EventLoop;
using test::RecordingLooper;

namespace {

constexpr uint32 kPlain = 'plan';
constexpr uint32 kHarmless = 'harm';

class ChangesTest : public testing::Test {
protected:
    ChangesTest()
    {
        fLooper->Run();
        EventLoop::RunDue();
    }
    ~ChangesTest() override { fLooper->Quit(); }

    /// Returns whether anything counted since the last call.
    bool HasChanged()
    {
        const uint64 count = EventLoop::CountChanges();
        return std::exchange(fCount, count) != count;
    }
    /// Returns whether posted messages count when they are handled; they must not count before.
    bool Counts()
    {
        EXPECT_FALSE(HasChanged());
        EventLoop::RunDue();
        return HasChanged();
    }
    void Post(uint32 code, bool isNewest = false)
    {
        BMessage message(code);
        message.SetNewestWins(isNewest);
        EXPECT_EQ(fLooper->PostMessage(&message), B_OK);
    }

    const kits::InterfaceLocker fLocker;
    test::MockClock fClock;
    std::function<void()> fWork;
    RecordingLooper* const fLooper = new RecordingLooper([this](BMessage* message) {
        if (fWork)
            std::exchange(fWork, nullptr)();
        if (message->what == kHarmless)
            EventLoop::NoteUnchanged();
    });
    uint64 fCount = EventLoop::CountChanges();
};

} // namespace

TEST_F(ChangesTest, NothingCountsWhenNothingIsHandled)
{
    HasChanged();
    EXPECT_FALSE(Counts());
}

TEST_F(ChangesTest, MessagesCountAlsoThoseOfWhichTheNewestWins)
{
    HasChanged();
    Post(kPlain);
    EXPECT_TRUE(Counts());
    Post(kPlain, true);
    EXPECT_TRUE(Counts());
    Post(kPlain, true);
    EXPECT_FALSE(HasChanged());
    EXPECT_TRUE(EventLoop::RunIfOnlyStreams());
    EXPECT_TRUE(HasChanged());
}

TEST_F(ChangesTest, WhatSaysThatItChangesNothingDoesNot)
{
    HasChanged();
    Post(kHarmless);
    EXPECT_FALSE(Counts());
    Post(kHarmless, true);
    EXPECT_FALSE(HasChanged());
    EXPECT_TRUE(EventLoop::RunIfOnlyStreams());
    EXPECT_FALSE(HasChanged());
}

TEST_F(ChangesTest, SaysSoOfItselfAlone)
{
    HasChanged();
    Post(kHarmless);
    Post(kPlain);
    Post(kHarmless);
    EXPECT_TRUE(Counts());
    Post(kPlain);
    EXPECT_TRUE(Counts());
    // Outside of a handler, the call has no effect.
    EventLoop::NoteUnchanged();
    Post(kPlain);
    EXPECT_TRUE(Counts());
    // A message that is handled inside a handler counts by itself.
    fWork = [this] {
        Post(kPlain);
        EventLoop::RunDue();
    };
    Post(kHarmless);
    EXPECT_TRUE(Counts());
    fWork = [this] {
        Post(kHarmless);
        EventLoop::RunDue();
    };
    Post(kPlain);
    EXPECT_TRUE(Counts());
}

TEST_F(ChangesTest, TimersCount)
{
    bool isHarmless = false;
    kits::Timer timer([&] {
        if (isHarmless)
            EventLoop::NoteUnchanged();
    });
    timer.Start(1000);
    HasChanged();
    EXPECT_FALSE(Counts());
    fClock.now += 1000;
    EXPECT_TRUE(Counts());
    isHarmless = true;
    fClock.now += 1000;
    EXPECT_FALSE(Counts());
}

TEST_F(ChangesTest, ActionsCount)
{
    HasChanged();
    kits::RunOnMainThread([] {});
    EXPECT_TRUE(Counts());
    kits::RunAtOutermostLoop([] {});
    EXPECT_TRUE(Counts());
}

TEST_F(ChangesTest, AnotherThreadCountsWhenItHasTheLock)
{
    HasChanged();
    const int32 depth = kits::InterfaceLock::Get().ReleaseAll();
    test::KitThread([] { const kits::InterfaceLocker locker; }).Join();
    kits::InterfaceLock::Get().Restore(depth);
    EXPECT_TRUE(HasChanged());
    // The main thread's own release and retake do not count.
    kits::InterfaceLock::Get().Restore(kits::InterfaceLock::Get().ReleaseAll());
    EXPECT_FALSE(HasChanged());
}

TEST_F(ChangesTest, CountsWhatIsDoneAfterALoopInside)
{
    // Code in a nested loop cannot know whether the outer handler has finished its changes.
    int changes = 0;
    fWork = [&] {
        fWork = [&] {
            for (int i = 0; i < 3; i++)
                changes += HasChanged();
        };
        Post(kHarmless);
        EventLoop::RunDue();
    };
    Post(kPlain);
    EventLoop::RunDue();
    EXPECT_EQ(changes, 3);
    EXPECT_TRUE(HasChanged());
    EXPECT_FALSE(HasChanged());
}
