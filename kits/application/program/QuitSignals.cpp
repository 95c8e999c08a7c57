#include "kits/application/EventLoop.h"
#include "kits/application/MainThreadPrivate.h"

#include <cerrno>
#include <csignal>

#include <atomic>

namespace kits {

namespace {

std::atomic<bool> sHasCome = false;

void NoteSignal(int)
{
    const int error = errno;
    sHasCome = true;
    EventLoop::Wake();
    errno = error;
}

} // namespace

void InstallQuitSignals()
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction before;
        struct sigaction action = {};
        action.sa_handler = NoteSignal;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        if (sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            sigaction(number, &action, nullptr);
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
