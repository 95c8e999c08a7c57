// SPDX-License-Identifier: MIT
#include "tests/support/BoundProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int kPatience = 60000; ///< milliseconds

class BoundProcessTest : public testing::Test {
protected:
    BoundProcessTest()
    {
        EXPECT_EQ(pipe2(fTold, O_CLOEXEC), 0);
        unsetenv(test::bound::kVariable);
    }
    ~BoundProcessTest() override
    {
        unsetenv(test::bound::kVariable);
        if (fRunner > 0)
            End();
        close(fTold[0]);
    }

    /// Starts the program beside this one; its output comes through the pipe.
    void Start(std::vector<std::string> arguments)
    {
        const std::string program = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "bound_runner";
        arguments.insert(arguments.begin(), program);
        std::vector<char*> pointers;
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        fRunner = test::ForkBound();
        if (fRunner == 0) {
            dup2(fTold[1], STDOUT_FILENO);
            execv(program.c_str(), pointers.data());
            _exit(1);
        }
        close(fTold[1]);
    }

    /// Returns the ids of this many processes, as they print them.
    std::vector<pid_t> Told(size_t count) const
    {
        std::vector<pid_t> numbers;
        std::string line;
        char c = 0;
        while (numbers.size() < count && IsTold() && read(fTold[0], &c, 1) == 1) {
            if (c != '\n') {
                line += c;
                continue;
            }
            numbers.push_back(std::stoi(line));
            line.clear();
        }
        return numbers;
    }

    /// Waits for more output, or until nobody is left who could write any.
    bool IsTold() const
    {
        pollfd more{fTold[0], POLLIN, 0};
        return poll(&more, 1, kPatience) == 1;
    }

    bool IsNobodyLeft() const
    {
        char c = 0;
        return IsTold() && read(fTold[0], &c, 1) == 0;
    }

    /// Kills the runner.
    /// @return the status from waitpid()
    int End()
    {
        int status = 0;
        kill(fRunner, SIGKILL);
        waitpid(fRunner, &status, 0);
        fRunner = -1;
        return status;
    }

    pid_t fRunner = -1;
    int fTold[2] = {-1, -1};
};

} // namespace

TEST_F(BoundProcessTest, AllEndWithARunnerThatIsKilled)
{
    Start({});
    const std::vector<pid_t> numbers = Told(5);
    ASSERT_EQ(numbers.size(), 5U);
    std::vector<pollfd> processes;
    for (const pid_t number : numbers) {
        processes.push_back({static_cast<int>(syscall(SYS_pidfd_open, number, 0)), POLLIN, 0});
        EXPECT_EQ(poll(&processes.back(), 1, 0), 0) << "it runs";
    }
    EXPECT_TRUE(WIFSIGNALED(End()));
    for (pollfd& process : processes) {
        EXPECT_EQ(poll(&process, 1, kPatience), 1);
        syscall(SYS_pidfd_send_signal, process.fd, SIGKILL, nullptr, 0);
        close(process.fd);
    }
    EXPECT_TRUE(IsNobodyLeft());
}

TEST_F(BoundProcessTest, APartnerWithoutATestGoesOn)
{
    Start({"partner"});
    EXPECT_EQ(Told(1), std::vector<pid_t>{fRunner});
    EXPECT_EQ(waitpid(fRunner, nullptr, WNOHANG), 0);
}

TEST_F(BoundProcessTest, APartnerThatComesAfterTheEndOfItsTestEndsAtOnce)
{
    // Another process may have that id meanwhile.
    for (const std::string& gone : {std::string("99999999 1"), std::to_string(getpid()) + " 1"}) {
        setenv(test::bound::kVariable, gone.c_str(), 1);
        Start({"partner"});
        EXPECT_TRUE(IsNobodyLeft());
        int status = 0;
        EXPECT_EQ(waitpid(fRunner, &status, 0), fRunner);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1);
        fRunner = -1;
        close(fTold[0]);
        ASSERT_EQ(pipe2(fTold, O_CLOEXEC), 0);
    }
    close(fTold[1]);
}

TEST_F(BoundProcessTest, AChildOfAnotherThreadWouldEndWithThatThread)
{
    EXPECT_DEATH(std::thread([] { test::ForkBound(); }).join(), "");
    close(fTold[1]);
}
