// SPDX-License-Identifier: MIT
#include "kits/application/Token.h"

#include "kits/application/teams/TeamSocket.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <thread>

namespace {

using namespace kits;

/// Starts a process that does nothing until it is killed.
pid_t StartProcess()
{
    const pid_t process = fork();
    if (process == 0)
        for (;;)
            pause();
    return process;
}

void End(pid_t process)
{
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

TEST(TokenTest, ThisProcessIsATeamThatIsAlive)
{
    EXPECT_EQ(TeamOfProcess(getpid()), ThisTeam());
    EXPECT_EQ(TeamIdOf(ThisTeam()), getpid());
    EXPECT_TRUE(IsTeamAlive(ThisTeam()));
}

TEST(TokenTest, AProcessThatStartedAtAnotherTimeIsAnotherTeam)
{
    EXPECT_FALSE(IsTeamAlive(ThisTeam() + 1));
    EXPECT_FALSE(IsTeamAlive(0));
}

TEST(TokenTest, AProcessThatIsGoneIsNoTeam)
{
    const pid_t process = StartProcess();
    const team_address team = TeamOfProcess(process);
    EXPECT_TRUE(IsTeamAlive(team));
    End(process);
    EXPECT_FALSE(IsTeamAlive(team));
    EXPECT_EQ(TeamOfProcess(process), 0u);
}

/// The file about a process cannot be read any more if the process has gone since the file was opened.
TEST(TokenTest, AProcessMayGoWhileItIsLookedAt)
{
    for (int i = 0; i < 300; ++i) {
        const pid_t process = StartProcess();
        const team_address team = TeamOfProcess(process);
        ASSERT_NE(team, 0u);
        std::atomic<bool> isLooking = false;
        std::thread reader([&] {
            while (IsTeamAlive(team))
                isLooking = true;
        });
        while (!isLooking)
            std::this_thread::yield();
        End(process);
        reader.join();
        EXPECT_EQ(TeamOfProcess(process), 0u);
    }
}

} // namespace
