// SPDX-License-Identifier: MIT
#include "kits/application/EventLoop.h"
#include "kits/application/delivery/MainThreadPrivate.h"

#include <ucontext.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>

namespace kits {

namespace {

std::atomic<bool> sHasCome = false;

constexpr int kQuitSignals[] = {SIGTERM, SIGINT, SIGHUP};

// For a signal handler, which cannot use a string.
int sFolder = -1;
char sName[kLongestNameToLeave + 1];
char sLeft[kLongestNameToLeave + 1];

/// Installed so that the signal has its default action again, and is not blocked.
void Leave(int number)
{
    renameat(sFolder, sName, sFolder, sLeft);
    raise(number);
}

// Not a signal that the C library, the toolkit or a debugger uses.
const int kShieldSignal = SIGRTMIN + 7;

/// Blocks the quit signals in the thread that runs this handler: the thread continues with the mask that is changed
/// here.
void Shield(int, siginfo_t*, void* context)
{
    for (const int number : kQuitSignals)
        sigaddset(&static_cast<ucontext_t*>(context)->uc_sigmask, number);
}

/// Installs a handler of the quit signals.
/// @param mayReplace  true if it may replace the present handler
void HandleQuitSignals(void (*handler)(int), int flags, bool (*mayReplace)(void (*present)(int)))
{
    for (const int number : kQuitSignals) {
        struct sigaction before;
        struct sigaction action = {};
        action.sa_handler = handler;
        action.sa_flags = flags;
        sigemptyset(&action.sa_mask);
        if (sigaction(number, nullptr, &before) == 0 && mayReplace(before.sa_handler))
            sigaction(number, &action, nullptr);
    }
}

void NoteSignal(int)
{
    const int error = errno;
    sHasCome = true;
    EventLoop::Wake();
    errno = error;
}

} // namespace

void LeaveAtQuitSignal(int folder, const std::string& name, const std::string& left)
{
    sFolder = folder;
    std::fill(std::copy_n(name.c_str(), std::min(name.size(), kLongestNameToLeave), sName), std::end(sName), '\0');
    std::fill(std::copy_n(left.c_str(), std::min(left.size(), kLongestNameToLeave), sLeft), std::end(sLeft), '\0');
    HandleQuitSignals(Leave, SA_RESETHAND | SA_NODEFER, [](void (*present)(int)) { return present == SIG_DFL; });
}

void InstallQuitSignals()
{
    HandleQuitSignals(
        NoteSignal, SA_RESTART, [](void (*present)(int)) { return present != SIG_IGN; });
}

void KeepQuitSignals()
{
    struct sigaction before;
    struct sigaction action = {};
    action.sa_sigaction = Shield;
    action.sa_flags = SA_RESTART | SA_SIGINFO;
    sigfillset(&action.sa_mask);
    if (sigaction(kShieldSignal, nullptr, &before) != 0 || before.sa_handler == SIG_IGN ||
        sigaction(kShieldSignal, &action, nullptr) != 0)
        return;
    std::error_code error;
    for (std::filesystem::directory_iterator task("/proc/self/task", error), end; !error && task != end;
         task.increment(error)) {
        const pid_t thread = std::atoi(task->path().filename().c_str());
        if (thread != gettid())
            tgkill(getpid(), thread, kShieldSignal);
    }
}

bool IsQuitSignalWaiting()
{
    return sHasCome;
}

bool TakeQuitSignal()
{
    return sHasCome.exchange(false);
}

} // namespace kits
