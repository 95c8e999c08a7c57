// SPDX-License-Identifier: MIT
#include "kits/application/delivery/PeerAccounts.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using kits::PeerAccounts;
using kits::PeerClaim;
using kits::Resource;
namespace bounds = kits::bounds;

namespace {

constexpr kits::team_address kFirst = 1, kSecond = 2, kThird = 3;
constexpr auto kAny = Resource::kIncomplete;

/// Limits: ten of each for a process, fifteen for all processes, and a guaranteed share of three.
class PeerAccountsTest : public testing::Test {
protected:
    static PeerAccounts::Table Table()
    {
        PeerAccounts::Table table;
        table.fill({10, 15, 3});
        return table;
    }
    PeerClaim ClaimOf(kits::team_address process, Resource resource = kAny)
    {
        return PeerClaim(&fAccounts, process, resource);
    }

    int fCountRoom = 0;
    PeerAccounts fAccounts{[this] { ++fCountRoom; }, Table()};
};

} // namespace

TEST_F(PeerAccountsTest, GiveAProcessAsMuchAsItMayHave)
{
    PeerClaim claim = ClaimOf(kFirst), more = ClaimOf(kFirst);
    EXPECT_EQ(fAccounts.Room(kFirst, kAny), 10u);
    EXPECT_TRUE(claim.Resize(10));
    EXPECT_EQ(fAccounts.Room(kFirst, kAny), 0u);
    EXPECT_FALSE(claim.Resize(11));
    EXPECT_EQ(claim.Amount(), 10u);
    EXPECT_FALSE(more.Resize(1));
    EXPECT_TRUE(claim.Resize(9));
    EXPECT_TRUE(more.Resize(1));
    EXPECT_FALSE(more.Resize(2));
    EXPECT_EQ(fAccounts.Used(kFirst, kAny), 10u);
}

TEST_F(PeerAccountsTest, KeepResourcesAndProcessesApart)
{
    PeerClaim claim = ClaimOf(kFirst), other = ClaimOf(kFirst, Resource::kUnsent), second = ClaimOf(kSecond);
    EXPECT_TRUE(claim.Resize(10));
    EXPECT_TRUE(other.Resize(10));
    EXPECT_TRUE(second.Resize(5));
    EXPECT_EQ(fAccounts.Used(kFirst, Resource::kUnsent), 10u);
    EXPECT_EQ(fAccounts.Used(kSecond, kAny), 5u);
    EXPECT_EQ(fAccounts.UsedByAll(kAny), 15u);
    EXPECT_EQ(fAccounts.UsedByAll(Resource::kLinks), 0u);
}

TEST_F(PeerAccountsTest, HoldAllTogetherToALimit)
{
    PeerClaim first = ClaimOf(kFirst), second = ClaimOf(kSecond);
    EXPECT_TRUE(first.Resize(10));
    EXPECT_FALSE(second.Resize(6));
    EXPECT_TRUE(second.Resize(5));
    EXPECT_FALSE(second.Resize(6));
}

TEST_F(PeerAccountsTest, GiveEveryoneAShareInAnyCase)
{
    PeerClaim first = ClaimOf(kFirst), second = ClaimOf(kSecond), third = ClaimOf(kThird);
    EXPECT_TRUE(first.Resize(10));
    EXPECT_TRUE(second.Resize(5));
    EXPECT_FALSE(third.Resize(4));
    EXPECT_TRUE(third.Resize(3));
    EXPECT_FALSE(third.Resize(4));
    EXPECT_EQ(fAccounts.UsedByAll(kAny), 18u);
    // Above its share, a process is bound by the common limit, however far shares have exceeded that.
    EXPECT_TRUE(first.Resize(9));
    EXPECT_FALSE(first.Resize(10));
    EXPECT_EQ(fAccounts.Room(kFirst, kAny), 0u);
    EXPECT_TRUE(first.Resize(6));
    EXPECT_TRUE(first.Resize(7));
}

TEST_F(PeerAccountsTest, SayOnceThatThereIsRoomAgainToWhoFoundNone)
{
    PeerClaim claim = ClaimOf(kFirst), more = ClaimOf(kFirst);
    EXPECT_TRUE(claim.Resize(10));
    EXPECT_TRUE(claim.Resize(5));
    EXPECT_EQ(fCountRoom, 0);
    EXPECT_FALSE(more.Resize(6));
    EXPECT_TRUE(claim.Resize(4));
    EXPECT_EQ(fCountRoom, 1);
    EXPECT_TRUE(claim.Resize(3));
    EXPECT_EQ(fCountRoom, 1);
    // Asking for room counts as finding none.
    EXPECT_TRUE(fAccounts.HasRoom(kFirst, kAny, 7));
    EXPECT_TRUE(claim.Resize(2));
    EXPECT_EQ(fCountRoom, 1);
    EXPECT_FALSE(fAccounts.HasRoom(kFirst, kAny, 9));
    claim = PeerClaim();
    EXPECT_EQ(fCountRoom, 2);
}

TEST_F(PeerAccountsTest, ForgetWhoHasNothing)
{
    for (kits::team_address process = 1; process <= 1000; ++process) {
        PeerClaim claim = ClaimOf(process);
        EXPECT_TRUE(claim.Resize(1));
        PeerClaim tooMuch = ClaimOf(process + 1);
        EXPECT_FALSE(tooMuch.Resize(11));
        EXPECT_EQ(fAccounts.CountProcesses(), 1u);
    }
    EXPECT_EQ(fAccounts.CountProcesses(), 0u);
    EXPECT_EQ(fAccounts.UsedByAll(kAny), 0u);
}

TEST_F(PeerAccountsTest, GiveBackWhatAClaimHadWhenItGoesOrIsReplaced)
{
    PeerClaim claim = ClaimOf(kFirst);
    EXPECT_TRUE(claim.Resize(4));
    PeerClaim moved(std::move(claim));
    EXPECT_EQ(moved.Amount(), 4u);
    EXPECT_EQ(fAccounts.Used(kFirst, kAny), 4u);
    PeerClaim second = ClaimOf(kSecond);
    EXPECT_TRUE(second.Resize(2));
    moved = std::move(second);
    EXPECT_EQ(fAccounts.Used(kFirst, kAny), 0u);
    EXPECT_EQ(fAccounts.Used(kSecond, kAny), 2u);
    {
        const PeerClaim last(std::move(moved));
    }
    EXPECT_EQ(fAccounts.UsedByAll(kAny), 0u);
}

TEST_F(PeerAccountsTest, GiveNothingOnNoAccount)
{
    PeerClaim none;
    EXPECT_TRUE(none.Resize(0));
    EXPECT_FALSE(none.Resize(1));
}

TEST(PeerAccounts, HaveTheLimitsOfTheTable)
{
    const struct {
        Resource resource;
        size_t ofAProcess, inAll, share;
    } rows[] = {
        {Resource::kConnections, bounds::kMostConnectionsOfAProcess, bounds::kMostConnections, 0},
        {Resource::kLinks, bounds::kMostLinksOfAProcess, bounds::kMostLinks, 0},
        {Resource::kIncomplete, bounds::kMostIncompleteOfAProcess, bounds::kMostIncomplete, bounds::kShareOfBytes},
        {Resource::kUnsent, bounds::kMostUnsentOfAProcess, bounds::kMostUnsent, bounds::kShareOfBytes},
        {Resource::kUnhandled, bounds::kMostUnhandledOfAProcess, bounds::kMostUnhandled, bounds::kShareOfMessages},
        {Resource::kUnhandledBytes, bounds::kMostUnhandledBytesOfAProcess, bounds::kMostUnhandledBytes,
         bounds::kShareOfBytes},
    };
    for (const auto& row : rows) {
        PeerAccounts accounts([] {});
        std::vector<std::unique_ptr<PeerClaim>> claims;
        size_t inAll = 0;
        for (kits::team_address process = 1; process <= 1000; ++process) {
            claims.push_back(std::make_unique<PeerClaim>(&accounts, process, row.resource));
            const size_t most = std::max(std::min(row.ofAProcess, row.inAll - std::min(row.inAll, inAll)), row.share);
            EXPECT_FALSE(claims.back()->Resize(most + 1));
            EXPECT_TRUE(claims.back()->Resize(most));
            inAll += most;
        }
        EXPECT_EQ(accounts.UsedByAll(row.resource), inAll);
        EXPECT_GE(inAll, row.inAll);
    }
}

TEST(PeerAccounts, LeaveRoomForTheLongestFrame)
{
    // A whole frame and the beginning of the next.
    EXPECT_GE(bounds::kMostIncompleteOfAProcess, bounds::kMostFrame + 4 + bounds::kMostReadOfAFrame);
    EXPECT_GE(bounds::kMostUnsentOfAProcess, 2 * bounds::kMostFrame);
    // Even if all others claim everything, a process's guaranteed share is enough for a sample.
    EXPECT_GE(bounds::kShareOfBytes, 8 * bounds::kKiB);
}
