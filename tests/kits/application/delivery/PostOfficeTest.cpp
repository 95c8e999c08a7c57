// SPDX-License-Identifier: MIT
#include "kits/application/delivery/PostOffice.h"

#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "tests/support/Loop.h"

#include <gtest/gtest.h>

using kits::PeerClaim;
using kits::PostOffice;
using kits::Resource;
using kits::team_address;

namespace {

using Codes = std::vector<uint32>;

constexpr team_address kFirst = 10;
constexpr team_address kSecond = 20;
constexpr bigtime_t kLongest = kits::bounds::kLongestOfAProcess;

/// A looper each of whose messages takes half of the time that a process may take in a turn, unless a test changes
/// that.
class PostOfficeTest : public testing::Test {
protected:
    PostOfficeTest()
    {
        // Pays off the time that earlier tests have used.
        for (int turn = 0; turn < 8; ++turn)
            Turn();
        fLooper->Run();
    }
    ~PostOfficeTest() override { fLooper->Quit(); }

    void Post(uint32 code, team_address process = 0, bool newestWins = false)
    {
        auto message = std::make_unique<BMessage>(code);
        message->SetNewestWins(newestWins);
        std::unique_ptr<kits::PeerWork> work;
        if (process != 0) {
            work = std::make_unique<kits::PeerWork>();
            work->message = PeerClaim(&fAccounts, process, Resource::kUnhandled);
            EXPECT_TRUE(work->message.Resize(1));
        }
        PostOffice& office = PostOffice::Get();
        EXPECT_EQ(office.Post(fLooper->Token(), message, work != nullptr ? &work : nullptr), B_OK);
    }

    /// Returns the messages of one turn.
    Codes Turn()
    {
        fLooper->codes.clear();
        kits::EventLoop::Current().RunDue();
        return fLooper->codes;
    }

    const kits::InterfaceLocker fLocker;
    test::MockClock fClock;
    kits::PeerAccounts fAccounts{[] {}};
    bigtime_t fTime = kLongest / 2;
    std::function<void(BMessage*)> fWork;
    test::RecordingLooper* const fLooper = new test::RecordingLooper([this](BMessage* message) {
        fClock.now += fTime;
        if (fWork != nullptr)
            fWork(message);
    });
};

} // namespace

TEST_F(PostOfficeTest, HandlesMessagesOfAProcessOnlySoLongInATurn)
{
    for (uint32 code = 1; code <= 5; ++code)
        Post(code, kFirst);
    EXPECT_EQ(Turn(), (Codes{1, 2}));
    EXPECT_EQ(Turn(), (Codes{3, 4}));
    EXPECT_EQ(fAccounts.Used(kFirst, Resource::kUnhandled), 1u);
    EXPECT_EQ(Turn(), (Codes{5}));
    EXPECT_EQ(fAccounts.CountProcesses(), 0u);
    EXPECT_FALSE(PostOffice::Get().HasMessages());
}

TEST_F(PostOfficeTest, HandlesOwnMessagesHoweverLong)
{
    for (uint32 code = 1; code <= 5; ++code)
        Post(code);
    EXPECT_EQ(Turn(), (Codes{1, 2, 3, 4, 5}));
}

TEST_F(PostOfficeTest, HandlesMessagesOfOthersBeforeThoseThatWaitForTheirTurn)
{
    for (uint32 code = 1; code <= 4; ++code)
        Post(code, kFirst);
    Post(11, kSecond);
    Post(21);
    Post(12, kSecond);
    EXPECT_EQ(Turn(), (Codes{1, 2, 11, 21, 12}));
    Post(22);
    EXPECT_EQ(Turn(), (Codes{3, 4, 22}));
    EXPECT_FALSE(PostOffice::Get().HasMessages());
}

TEST_F(PostOfficeTest, ReplacesAMessageThatWaitsForItsTurnAndForgetsOneThatWasTakenBeforeIt)
{
    for (uint32 code = 1; code <= 3; ++code)
        Post(code, kFirst);
    Post(4, kFirst, true);
    Post(5, kSecond, true);
    EXPECT_EQ(Turn(), (Codes{1, 2, 5}));
    Post(4, kFirst, true);
    Post(5, kSecond, true);
    EXPECT_EQ(Turn(), (Codes{3, 4, 5}));
    EXPECT_EQ(Turn(), Codes());
    EXPECT_EQ(fAccounts.CountProcesses(), 0u);
}

TEST_F(PostOfficeTest, GivesAProcessATurnOfItsOwnInANestedLoop)
{
    Codes inside;
    fWork = [this, &inside](BMessage* message) {
        if (message->what != 2)
            return;
        fWork = nullptr;
        const Codes before = fLooper->codes;
        inside = Turn();
        fLooper->codes = before;
    };
    for (uint32 code = 1; code <= 4; ++code)
        Post(code, kFirst);
    Turn();
    EXPECT_EQ(inside, (Codes{3, 4}));
    EXPECT_FALSE(PostOffice::Get().HasMessages());
}

TEST_F(PostOfficeTest, LetsAProcessWaitForMoreTurnsAfterALongMessage)
{
    fTime = kLongest * 3;
    Post(1, kFirst);
    Post(2, kFirst);
    Post(11, kSecond);
    EXPECT_EQ(Turn(), (Codes{1, 11}));
    EXPECT_EQ(Turn(), Codes());
    Post(21);
    EXPECT_EQ(Turn(), (Codes{21}));
    EXPECT_EQ(Turn(), (Codes{2}));
}

TEST_F(PostOfficeTest, LetsNoProcessWaitForever)
{
    fTime = kLongest * 1'000'000;
    Post(1, kFirst);
    Post(2, kFirst);
    EXPECT_EQ(Turn(), (Codes{1}));
    for (int turn = 0; turn < 7; ++turn)
        EXPECT_EQ(Turn(), Codes());
    EXPECT_EQ(Turn(), (Codes{2}));
}
