// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/Tool.h"

#include "kits/kernel/Bounds.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace kits {

namespace {

std::string Find(const std::string& program)
{
    if (program.find('/') != std::string::npos)
        return access(program.c_str(), X_OK) == 0 ? program : std::string();
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::string file = folder + "/" + program;
        if (!folder.empty() && access(file.c_str(), X_OK) == 0)
            return file;
    }
    return {};
}

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// The environment of this process with the plain locale, so that the output is the same everywhere.
std::vector<std::string> PlainEnvironment()
{
    std::vector<std::string> variables;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable)
        if (strncmp(*variable, "LC_ALL=", 7) != 0 && strncmp(*variable, "LANGUAGE=", 9) != 0)
            variables.emplace_back(*variable);
    variables.emplace_back("LC_ALL=C.UTF-8");
    return variables;
}

} // namespace

Tool::Tool(const std::vector<std::string>& arguments)
{
    const std::string program = Find(arguments[0]);
    std::vector<std::string> texts = arguments;
    std::vector<std::string> variables = PlainEnvironment();
    const std::vector<char*> argumentPointers = Pointers(texts);
    const std::vector<char*> variablePointers = Pointers(variables);
    int ends[2];
    if (program.empty() || pipe2(ends, O_CLOEXEC) != 0)
        return;
    fOutput = FileDescriptor(ends[0]);
    const FileDescriptor input(ends[1]);
    const FileDescriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
    const pid_t parent = getpid();
    fProcess = fork();
    if (fProcess == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGPIPE})
            signal(number, SIG_DFL);
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        dup2(nothing.Get(), STDIN_FILENO);
        dup2(input.Get(), STDOUT_FILENO);
        dup2(nothing.Get(), STDERR_FILENO);
        // The parent may have gone before the first line above.
        if (getppid() == parent)
            execve(program.c_str(), argumentPointers.data(), variablePointers.data());
        _exit(127);
    }
    fcntl(fOutput.Get(), F_SETFL, O_NONBLOCK);
}

Tool::~Tool()
{
    Bury(true);
}

bool Tool::Exists(const std::string& program)
{
    return !Find(program).empty();
}

std::optional<std::string> Tool::Run(const std::vector<std::string>& arguments)
{
    std::string printed;
    return Run(arguments, bounds::kLongestTool, -1, &printed) == Ending::kGood ? std::optional(std::move(printed))
                                                                               : std::nullopt;
}

Tool::Ending Tool::Run(const std::vector<std::string>& arguments, bigtime_t longest, int stop, std::string* printed)
{
    Tool tool(arguments);
    if (tool.fProcess < 0)
        return Ending::kGivenUp;
    const bigtime_t until = system_time() + longest;
    while (tool.ReadSome()) {
        if (tool.fPrinted.size() > bounds::kMostPrinted)
            return Ending::kFailed;
        if (!tool.WaitForOutput(until, stop))
            return Ending::kGivenUp;
    }
    if (!tool.Bury(false))
        return Ending::kFailed;
    *printed = std::move(tool.fPrinted);
    return Ending::kGood;
}

std::optional<std::string> Tool::CallBus(const std::vector<std::string>& call)
{
    std::vector<std::string> arguments = {"dbus-send", "--session", "--print-reply=literal", "--reply-timeout=4000"};
    arguments.insert(arguments.end(), call.begin(), call.end());
    return Run(arguments);
}

bool Tool::BusLacks(const std::string& name)
{
    const std::optional<std::string> answer = CallBus({"--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                       "org.freedesktop.DBus.NameHasOwner", "string:" + name});
    return answer && answer->find("false") != answer->npos;
}

bool Tool::WaitForOutput(bigtime_t until, int stop) const
{
    const bigtime_t left = until - system_time();
    pollfd files[] = {{fOutput.Get(), POLLIN, 0}, {stop, POLLIN, 0}};
    return left > 0 && poll(files, 2, static_cast<int>(left / 1000 + 1)) > 0 && files[1].revents == 0;
}

bool Tool::ReadSome()
{
    if (!fOutput.IsOpen())
        return false;
    char bytes[4096];
    for (;;) {
        const ssize_t size = read(fOutput.Get(), bytes, sizeof(bytes));
        if (size > 0)
            fPrinted.append(bytes, static_cast<size_t>(size));
        else if (size < 0 && errno == EAGAIN)
            return true;
        else if (size == 0 || errno != EINTR)
            break;
        if (fPrinted.size() > bounds::kMostPrinted)
            return true;
    }
    fOutput.Close();
    return false;
}

std::vector<std::string> Tool::TakeLines()
{
    ReadSome();
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end; (end = fPrinted.find('\n', start)) != std::string::npos; start = end + 1)
        lines.push_back(fPrinted.substr(start, end - start));
    // The rest of an unfinished line stays.
    fPrinted.erase(0, fPrinted.size() - start > bounds::kMostPrinted ? std::string::npos : start);
    return lines;
}

bool Tool::Bury(bool kill)
{
    if (fProcess < 0)
        return false;
    // Does not wait for a tool that has closed its output and continues.
    for (const bigtime_t until = system_time() + bounds::kLongestTool; !kill; snooze(1000)) {
        int status = 0;
        const pid_t gone = waitpid(fProcess, &status, WNOHANG);
        if (gone != 0 && !(gone < 0 && errno == EINTR)) {
            fProcess = -1;
            return gone > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
        }
        kill = system_time() > until;
    }
    ::kill(fProcess, SIGKILL);
    while (waitpid(fProcess, nullptr, 0) < 0 && errno == EINTR) {
    }
    fProcess = -1;
    return false;
}

} // namespace kits
