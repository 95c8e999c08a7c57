// SPDX-License-Identifier: MIT
#include "kits/application/teams/ReadShift.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>

namespace kits {

ReadShift::ReadShift()
    : fTimer(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK))
{
}

bool ReadShift::MainWaits()
{
    // Without the timer, nothing would notice that the main thread is held up.
    if (!fTimer.IsOpen())
        return false;
    fIsMainWaiting = true;
    if (fIsMains)
        SetTimer(std::chrono::nanoseconds(0));
    return !fIsMains.exchange(true);
}

void ReadShift::MainWorks()
{
    if (!fIsMains)
        return;
    fIsMainWaiting = false;
    SetTimer(kLongestWork);
}

void ReadShift::Check()
{
    // Fails if the main thread has waited meanwhile, which stops the timer.
    uint64_t count;
    if (read(fTimer.Get(), &count, sizeof(count)) == sizeof(count) && !fIsMainWaiting)
        fIsMains = false;
}

void ReadShift::SetTimer(std::chrono::nanoseconds time)
{
    itimerspec setting = {};
    setting.it_value.tv_nsec = time.count();
    timerfd_settime(fTimer.Get(), 0, &setting, nullptr);
}

} // namespace kits
