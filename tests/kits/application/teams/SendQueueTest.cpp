// SPDX-License-Identifier: MIT
#include "kits/application/teams/SendQueue.h"

#include "kits/kernel/Errors.h"
#include "kits/kernel/FileDescriptor.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

using kits::FileDescriptor;
using kits::FrameKind;
using kits::MessageFrame;
using kits::Resource;
using kits::SendQueue;

namespace {

/// A queue and both ends of its connection.
class SendQueueTest : public testing::Test {
protected:
    SendQueueTest()
    {
        int ends[2];
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
        fNear = FileDescriptor(ends[0]);
        fFar = FileDescriptor(ends[1]);
    }

    status_t Add(std::vector<kits::token_t> targets, uint32 code, const std::string& text, bool newestWins = false,
                 bool sourceWaits = false)
    {
        MessageFrame frame;
        frame.targets = std::move(targets);
        frame.newestWins = newestWins;
        frame.sourceWaits = sourceWaits;
        return fQueue.AddMessage(std::move(frame), code, std::make_shared<std::string>(text));
    }

    /// Returns everything that arrives at the far end, as "target,target:text ".
    std::string Received()
    {
        std::string log;
        char buffer[64 * 1024];
        do {
            EXPECT_TRUE(fQueue.Flush(fNear.Get()));
            ssize_t size;
            while ((size = recv(fFar.Get(), buffer, sizeof(buffer), 0)) > 0)
                fReader.Add({buffer, static_cast<size_t>(size)});
            FrameKind kind{};
            std::string_view content, text;
            while (fReader.Next(&kind, &content) == kits::FrameReader::Result::kFrame) {
                if (kind != FrameKind::kMessage) {
                    log += "control ";
                    continue;
                }
                const auto frame = kits::ReadMessageFrame(content, &text);
                if (!frame) {
                    log += "broken ";
                    continue;
                }
                for (const kits::token_t target : frame->targets)
                    log += std::to_string(target) + (target == frame->targets.back() ? ":" : ",");
                log += text.size() > 20 ? std::to_string(text.size()) : std::string(text);
                log += " ";
            }
        } while (!fQueue.IsEmpty());
        EXPECT_EQ(fQueue.Capacity(), 0u);
        EXPECT_EQ(fAccounts.UsedByAll(Resource::kUnsent), 0u);
        return log;
    }

    static constexpr kits::team_address kPeer = 77;
    FileDescriptor fNear, fFar;
    kits::PeerAccounts fAccounts{[] {}};
    SendQueue fQueue{kits::PeerClaim(&fAccounts, kPeer, Resource::kUnsent)};
    kits::FrameReader fReader;
};

} // namespace

TEST_F(SendQueueTest, SendsInOrder)
{
    EXPECT_TRUE(fQueue.IsEmpty());
    fQueue.AddControl(kits::HelloFrame(1));
    EXPECT_EQ(Add({1}, 1, "a"), B_OK);
    EXPECT_EQ(Add({2, 3}, 1, ""), B_OK);
    fQueue.AddControl(kits::NumberFrame(FrameKind::kPing, 1));
    EXPECT_EQ(Add({1}, 2, std::string(1000000, 'x')), B_OK);
    EXPECT_EQ(Add({1}, 3, "b"), B_OK);
    EXPECT_GT(fQueue.Capacity(), 1000000u);
    EXPECT_EQ(fAccounts.Used(kPeer, Resource::kUnsent), fQueue.Capacity());
    EXPECT_EQ(Received(), "control 1:a 2,3: control 1:1000000 1:b ");
}

TEST_F(SendQueueTest, LetsTheNewestReplaceWhatWaitsForTheSame)
{
    Add({1, 2}, 7, "old", true);
    Add({1}, 8, "other code", true);
    Add({1}, 7, "plain");
    Add({1, 2}, 7, "new", true);
    EXPECT_EQ(fQueue.CountFrames(), 3u);
    for (int i = 0; i < 10000; ++i)
        Add({1, 2}, 7, "newest", true);
    EXPECT_EQ(fQueue.CountFrames(), 3u);
    EXPECT_LT(fQueue.Capacity(), 1000u);
    EXPECT_EQ(Received(), "1,2:newest 1:other code 1:plain ");
}

TEST_F(SendQueueTest, ReplacesOnlyForTheHandlersNamed)
{
    Add({1, 2, 3}, 7, "first", true);
    Add({2}, 7, "second", true);
    Add({4}, 7, "third", true);
    Add({3, 4, 5}, 7, "fourth", true);
    Add({1, 2}, 9, "fifth", true);
    EXPECT_EQ(Received(), "1:first 2:second 3,4,5:fourth 1,2:fifth ");
}

TEST_F(SendQueueTest, KeepsWhatSomebodyWaitsForAnAnswerTo)
{
    Add({1}, 7, "asked", true, true);
    Add({1}, 7, "new", true);
    Add({1}, 7, "asked again", true, true);
    EXPECT_EQ(Received(), "1:asked 1:new 1:asked again ");
}

TEST_F(SendQueueTest, SendsWhatWasBegunToItsEnd)
{
    Add({1}, 7, std::string(1000000, 'x'), true);
    EXPECT_TRUE(fQueue.Flush(fNear.Get()));
    EXPECT_FALSE(fQueue.IsEmpty());
    Add({1}, 7, "second", true);
    Add({1}, 7, "third", true);
    EXPECT_EQ(fQueue.CountFrames(), 2u);
    EXPECT_EQ(Received(), "1:1000000 1:third ");
}

TEST_F(SendQueueTest, TakesNoMoreThanThereIsRoomFor)
{
    const std::string big(1000 * 1024, 'x');
    while (Add({1}, 1, big) == B_OK) {
    }
    EXPECT_LE(fQueue.Capacity(), kits::bounds::kMostUnsentOfAProcess);
    EXPECT_GT(fQueue.Capacity() + big.size() + 1024, kits::bounds::kMostUnsentOfAProcess);
    EXPECT_EQ(Add({1}, 1, big), B_WOULD_BLOCK);
    const size_t count = fQueue.CountFrames();
    EXPECT_EQ(Add({1}, 2, big, true), B_WOULD_BLOCK);
    EXPECT_EQ(fQueue.CountFrames(), count);
    // Shorter frames still fit until the room is used up.
    while (Add({1}, 3, "small") == B_OK) {
    }
    while (fQueue.AddControl(kits::NumberFrame(FrameKind::kPing, 1)) == B_OK) {
    }
    EXPECT_LE(fQueue.Capacity(), kits::bounds::kMostUnsentOfAProcess);
    Received();
    EXPECT_EQ(Add({1}, 1, "z"), B_OK);
    EXPECT_EQ(Received(), "1:z ");
}

TEST_F(SendQueueTest, KeepsTheOlderWhereThereIsNoRoomForTheNewer)
{
    Add({1, 2}, 7, "older", true);
    std::string log = "1,2:older ";
    for (const std::string& text : {std::string(1000 * 1024, 'x'), std::string("small")})
        while (Add({1}, 1, text) == B_OK)
            log += "1:" + (text.size() > 20 ? std::to_string(text.size()) : text) + " ";
    EXPECT_EQ(Add({2}, 7, "newer", true), B_WOULD_BLOCK);
    EXPECT_EQ(Received(), log);
}

TEST_F(SendQueueTest, CountsTheMemoryOfSmallMessages)
{
    // Flattening reserves this much for the smallest message.
    std::string small("small");
    small.reserve(2048);
    const auto message = std::make_shared<const std::string>(std::move(small));
    size_t count = 0;
    MessageFrame frame;
    for (frame.targets = {1}; fQueue.AddMessage(frame, 1, message) == B_OK; ++count) {
    }
    // Neither more than the counted memory allows, nor far fewer than would fit.
    EXPECT_LE(count, kits::bounds::kMostUnsentOfAProcess / (sizeof(MessageFrame) + sizeof(std::string)));
    EXPECT_GT(count, kits::bounds::kMostUnsentOfAProcess / 512);
    EXPECT_EQ(fQueue.AddMessage(frame, 1, message), B_WOULD_BLOCK);
}

TEST_F(SendQueueTest, GivesWhatOthersHaveClaimedToNobody)
{
    kits::PeerClaim other(&fAccounts, kPeer, Resource::kUnsent);
    ASSERT_TRUE(other.Resize(kits::bounds::kMostUnsentOfAProcess - 1000));
    EXPECT_EQ(Add({1}, 1, std::string(1000, 'x')), B_WOULD_BLOCK);
    EXPECT_TRUE(fQueue.IsEmpty());
    EXPECT_EQ(Add({1}, 1, "short"), B_OK);
    other.Resize(0);
    EXPECT_EQ(Add({1}, 1, std::string(1000, 'x')), B_OK);
    EXPECT_EQ(Received(), "1:short 1:1000 ");
}

TEST_F(SendQueueTest, TellsWhenTheConnectionIsBroken)
{
    fFar.Close();
    Add({1}, 1, "a");
    EXPECT_FALSE(fQueue.Flush(fNear.Get()));
}
