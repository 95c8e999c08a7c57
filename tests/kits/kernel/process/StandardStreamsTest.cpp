// SPDX-License-Identifier: MIT
#include "kits/kernel/StandardStreams.h"

#include "tests/support/BoundProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>

namespace {

/// Runs the checks in a process without these streams. Returns 0, or the number of the check that failed.
int WithoutStreams(std::initializer_list<int> closed)
{
    const pid_t child = test::ForkBound();
    if (child == 0) {
        for (int stream : closed)
            close(stream);
        kits::FillStandardStreams();
        char byte = 0;
        for (int stream : closed) {
            if (fcntl(stream, F_GETFD) == -1)
                _exit(1);
            const ssize_t result = stream == STDIN_FILENO ? read(stream, &byte, 1) : write(stream, &byte, 1);
            if (result != -1 || errno != EBADF)
                _exit(2);
        }
        _exit(open("/dev/null", O_RDONLY) > STDERR_FILENO ? 0 : 3);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(StandardStreams, TakeThePlacesThatWouldGoToFiles)
{
    EXPECT_EQ(WithoutStreams({STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}), 0);
    EXPECT_EQ(WithoutStreams({STDOUT_FILENO}), 0);
    EXPECT_EQ(WithoutStreams({STDERR_FILENO}), 0);
}

TEST(StandardStreams, AreLeftAloneWhereTheyAre)
{
    const pid_t child = test::ForkBound();
    if (child == 0) {
        int ends[2];
        if (pipe(ends) != 0 || dup2(ends[0], STDIN_FILENO) == -1 || dup2(ends[1], STDOUT_FILENO) == -1)
            _exit(1);
        kits::FillStandardStreams();
        char byte = 'x';
        _exit(write(STDOUT_FILENO, &byte, 1) == 1 && read(STDIN_FILENO, &byte, 1) == 1 ? 0 : 2);
    }
    int status = -1;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}
