// SPDX-License-Identifier: MIT
#pragma once

#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

/// Processes that end with the test that has started them, even if it is killed by SIGKILL: a test that times out is,
/// and then runs no destructor.
namespace test {

/// Works as fork(), but the child is killed when the calling process ends. Only for the main thread: the kernel treats
/// the end of the thread that created a child as the end of its parent.
inline pid_t ForkBound()
{
    const pid_t parent = getpid();
    if (gettid() != parent)
        std::abort();
    const pid_t child = fork();
    if (child != 0)
        return child;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // The parent may have ended before.
    if (getppid() != parent)
        _exit(1);
    return 0;
}

namespace bound {

/// The environment variable with the id of the test's process and the time of its start, since ids are reused.
constexpr const char* kVariable = "TEST_PROCESS";

/// Returns the start time of a process, as the system prints it; empty if there is no such process.
inline std::string StartOf(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(file, text);
    const size_t end = text.rfind(')');
    if (end == std::string::npos)
        return {};
    std::istringstream fields(text.substr(end + 1));
    std::string start;
    // It is the 22nd field; the first two are cut off.
    for (int field = 3; field <= 22; ++field)
        fields >> start;
    return start;
}

} // namespace bound

/// Makes this process the one that EndWithTest() in others watches. Changes the environment, so call it before other
/// threads run.
inline void NameTest()
{
    setenv(bound::kVariable, (std::to_string(getpid()) + " " + bound::StartOf(getpid())).c_str(), 1);
}

/// Call it first in the main() of a program that tests start. Kills this program when the process ends that has called
/// NameTest() and has started this one, however indirectly. Does nothing without such a process.
inline void EndWithTest()
{
    const char* const text = std::getenv(bound::kVariable);
    int process = 0;
    char start[32] = "";
    if (text == nullptr || std::sscanf(text, "%d %31s", &process, start) != 2)
        return;
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (descriptor < 0 || bound::StartOf(process) != start)
        _exit(1);
    // Leaves signals to the other threads.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread([descriptor] {
        pollfd end{descriptor, POLLIN, 0};
        while (poll(&end, 1, -1) != 1) {
        }
        kill(getpid(), SIGKILL);
    }).detach();
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace test
