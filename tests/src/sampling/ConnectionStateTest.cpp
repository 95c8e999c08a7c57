// SPDX-License-Identifier: MIT
#include "src/sampling/ConnectionState.h"

#include <gtest/gtest.h>

using Phase = ConnectionState::Phase;

namespace {

constexpr team_id kTeam = 4711;
constexpr team_id kOther = 4712;

class ConnectionStateTest : public testing::Test {
protected:
    /// Puts it into the state after an attempt to which this team has agreed.
    void Connect()
    {
        ASSERT_TRUE(fState.Want());
        ASSERT_TRUE(fState.AttemptSucceeded(fState.AttemptBegins(), kTeam));
    }
    /// Puts it into the state after the application has gone later.
    void Wait()
    {
        Connect();
        ASSERT_TRUE(fState.ServerGone());
    }

    ConnectionState fState;
};

} // namespace

TEST_F(ConnectionStateTest, IsOffUntilItIsWanted)
{
    EXPECT_EQ(fState.Now(), Phase::kOff);
    EXPECT_EQ(fState.Team(), -1);
    EXPECT_EQ(fState.AttemptBegins(), 0u);
    EXPECT_FALSE(fState.ServerGone());
    EXPECT_FALSE(fState.TeamGone(kTeam));
    EXPECT_FALSE(fState.Unwant());
    EXPECT_FALSE(fState.AttemptSucceeded(0, kTeam));
    EXPECT_FALSE(fState.AttemptFailed(0));
    EXPECT_EQ(fState.Now(), Phase::kOff);
}

TEST_F(ConnectionStateTest, AsksAndIsConnected)
{
    EXPECT_TRUE(fState.Want());
    EXPECT_EQ(fState.Now(), Phase::kAsking);
    EXPECT_FALSE(fState.Want());
    const uint32 attempt = fState.AttemptBegins();
    EXPECT_NE(attempt, 0u);
    EXPECT_TRUE(fState.IsCurrent(attempt));
    EXPECT_TRUE(fState.AttemptSucceeded(attempt, kTeam));
    EXPECT_EQ(fState.Now(), Phase::kConnected);
    EXPECT_EQ(fState.Team(), kTeam);
    EXPECT_FALSE(fState.IsCurrent(attempt));
    EXPECT_EQ(fState.AttemptBegins(), 0u);
}

TEST_F(ConnectionStateTest, WaitsWhenAskingFails)
{
    fState.Want();
    EXPECT_TRUE(fState.AttemptFailed(fState.AttemptBegins()));
    EXPECT_EQ(fState.Now(), Phase::kWaiting);
    EXPECT_TRUE(fState.AttemptFailed(fState.AttemptBegins()));
    EXPECT_EQ(fState.Now(), Phase::kWaiting);
    EXPECT_TRUE(fState.AttemptSucceeded(fState.AttemptBegins(), kTeam));
    EXPECT_EQ(fState.Team(), kTeam);
}

TEST_F(ConnectionStateTest, WaitsWhenTheServerGoes)
{
    Connect();
    EXPECT_TRUE(fState.ServerGone());
    EXPECT_EQ(fState.Now(), Phase::kWaiting);
    EXPECT_EQ(fState.Team(), -1);
    EXPECT_FALSE(fState.ServerGone());
}

TEST_F(ConnectionStateTest, WaitsWhenItsTeamGoesAndNoOther)
{
    Connect();
    EXPECT_FALSE(fState.TeamGone(kOther));
    EXPECT_EQ(fState.Now(), Phase::kConnected);
    EXPECT_TRUE(fState.TeamGone(kTeam));
    EXPECT_EQ(fState.Now(), Phase::kWaiting);
    EXPECT_FALSE(fState.TeamGone(kTeam));
}

TEST_F(ConnectionStateTest, DoesNotBelieveWhoHasGoneMeanwhile)
{
    Wait();
    uint32 attempt = fState.AttemptBegins();
    fState.ServerGone();
    EXPECT_FALSE(fState.AttemptSucceeded(attempt, kTeam));
    EXPECT_EQ(fState.Now(), Phase::kWaiting);

    attempt = fState.AttemptBegins();
    fState.TeamGone(kOther);
    fState.TeamGone(kTeam);
    EXPECT_FALSE(fState.AttemptSucceeded(attempt, kTeam));

    // Neither another team nor a report from before the attempt concerns it.
    fState.TeamGone(kTeam);
    attempt = fState.AttemptBegins();
    fState.TeamGone(kOther);
    EXPECT_TRUE(fState.AttemptSucceeded(attempt, kTeam));
}

TEST_F(ConnectionStateTest, NothingGrowsWithWhatIsSaidToHaveGone)
{
    Wait();
    uint32 attempt = fState.AttemptBegins();
    for (team_id team = 0; team < 100; team++)
        fState.TeamGone(team);
    // More reports than can be true: it is no longer known which team they meant.
    EXPECT_FALSE(fState.AttemptSucceeded(attempt, kTeam));
    attempt = fState.AttemptBegins();
    EXPECT_TRUE(fState.AttemptSucceeded(attempt, kTeam));
}

TEST_F(ConnectionStateTest, OnlyTheNewestAttemptCounts)
{
    fState.Want();
    const uint32 old = fState.AttemptBegins();
    const uint32 attempt = fState.AttemptBegins();
    EXPECT_NE(old, attempt);
    EXPECT_FALSE(fState.AttemptSucceeded(old, kOther));
    EXPECT_FALSE(fState.AttemptFailed(old));
    EXPECT_EQ(fState.Now(), Phase::kAsking);
    EXPECT_TRUE(fState.AttemptSucceeded(attempt, kTeam));

    fState.Want();
    const uint32 given = fState.AttemptBegins();
    EXPECT_TRUE(fState.Unwant());
    EXPECT_FALSE(fState.AttemptSucceeded(given, kTeam));
    EXPECT_FALSE(fState.AttemptFailed(given));
    EXPECT_EQ(fState.Now(), Phase::kOff);

    fState.Want();
    EXPECT_FALSE(fState.AttemptFailed(given));
    EXPECT_EQ(fState.Now(), Phase::kAsking);
}

TEST_F(ConnectionStateTest, CanBeAskedForAgain)
{
    Connect();
    EXPECT_TRUE(fState.Want());
    EXPECT_EQ(fState.Now(), Phase::kAsking);
    EXPECT_TRUE(fState.AttemptFailed(fState.AttemptBegins()));
    const uint32 retry = fState.AttemptBegins();
    EXPECT_TRUE(fState.Want());
    EXPECT_FALSE(fState.AttemptSucceeded(retry, kTeam));
    EXPECT_TRUE(fState.AttemptSucceeded(fState.AttemptBegins(), kTeam));
}
