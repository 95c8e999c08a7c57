// SPDX-License-Identifier: MIT
#include "kits/kernel/threads/Priority.h"

#include "kits/kernel/Threads.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace kits {

int NiceForPriority(int32 priority) noexcept
{
    const int32 held = std::clamp(priority, B_LOWEST_ACTIVE_PRIORITY, B_REAL_TIME_PRIORITY);
    if (held <= B_NORMAL_PRIORITY)
        return B_NORMAL_PRIORITY - held;
    return -(held - B_NORMAL_PRIORITY) / 8;
}

void ApplyPriority(int32 priority) noexcept
{
    // A new thread inherits the level of its creator: count from the process's level, which is that of its first
    // thread.
    errno = 0;
    int base = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
    if (errno != 0)
        base = 0;
    const int wanted = std::clamp(base + NiceForPriority(priority), -20, 19);
    const auto self = static_cast<id_t>(gettid());
    if (setpriority(PRIO_PROCESS, self, wanted) == 0)
        return;
    rlimit limit;
    if (getrlimit(RLIMIT_NICE, &limit) != 0)
        return;
    const int lowest = 20 - static_cast<int>(std::min<rlim_t>(limit.rlim_cur, 40));
    setpriority(PRIO_PROCESS, self, std::max(wanted, std::min(lowest, base)));
}

} // namespace kits
