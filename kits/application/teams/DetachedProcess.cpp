// SPDX-License-Identifier: MIT
#include "kits/application/teams/DetachedProcess.h"

#include "kits/kernel/Errors.h"
#include "kits/kernel/FileDescriptor.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace kits {

namespace {

/// Meant for one process, which does not pass it on.
constexpr const char* kLaunchVariable = "KITS_LAUNCH=";

/// Searched here, not in the new process: between fork and exec only the simplest calls are safe.
std::string FindProgram(const std::string& name)
{
    if (name.find('/') != std::string::npos)
        return name;
    const char* path = getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::string program = (folder.empty() ? "." : folder) + "/" + name;
        if (access(program.c_str(), X_OK) == 0)
            return program;
    }
    return {};
}

/// The array ends with null, and points into the strings, which must outlive it.
std::vector<char*> Pointers(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

/// Returns this process's environment with the variable to inherit, and without a launch grant that this process has
/// received itself.
std::vector<std::string> EnvironmentWith(const Inheritance& inheritance)
{
    std::vector<std::string> variables;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable)
        if (strncmp(*variable, kLaunchVariable, strlen(kLaunchVariable)) != 0)
            variables.emplace_back(*variable);
    if (!inheritance.variable.empty())
        variables.push_back(inheritance.variable + "=" + inheritance.value);
    return variables;
}

/// Runs in the new process: becomes the program, or reports why it cannot.
[[noreturn]] void Become(const char* program, char* const* arguments, char* const* environment,
                         const std::vector<int>& descriptors, int report)
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGPIPE})
        signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int descriptor : descriptors)
        fcntl(descriptor, F_SETFD, 0);
    execve(program, arguments, environment);
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(report, &error, sizeof(error));
    _exit(127);
}

} // namespace

status_t StartDetached(const std::vector<std::string>& arguments, const Inheritance& inheritance)
{
    const std::string program = arguments.empty() ? std::string() : FindProgram(arguments[0]);
    if (program.empty())
        return B_ENTRY_NOT_FOUND;
    const std::vector<std::string> variables = EnvironmentWith(inheritance);
    const std::vector<char*> argumentPointers = Pointers(arguments);
    const std::vector<char*> variablePointers = Pointers(variables);

    // exec closes it, so reading from it ends when the program runs.
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return StatusFromErrno(errno);
    FileDescriptor report(ends[0]);
    FileDescriptor reporter(ends[1]);

    // The child ends at once, so that the program's parent is the system, which reaps it.
    const pid_t child = fork();
    if (child < 0)
        return StatusFromErrno(errno);
    if (child == 0) {
        const pid_t grandchild = fork();
        if (grandchild == 0)
            Become(program.c_str(), argumentPointers.data(), variablePointers.data(), inheritance.descriptors, ends[1]);
        if (grandchild < 0) {
            const int error = errno;
            [[maybe_unused]] const ssize_t written = write(ends[1], &error, sizeof(error));
        }
        _exit(0);
    }
    reporter.Close();
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    int error = 0;
    ssize_t size;
    do {
        size = read(report.Get(), &error, sizeof(error));
    } while (size < 0 && errno == EINTR);
    return size == sizeof(error) ? StatusFromErrno(error) : B_OK;
}

} // namespace kits
