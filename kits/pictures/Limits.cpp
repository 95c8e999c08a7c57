// SPDX-License-Identifier: MIT
#include "kits/pictures/Limits.h"

#include "kits/kernel/Bounds.h"

#include <malloc.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <algorithm>

namespace kits {

namespace {

template <class Resource> void Limit(Resource resource, rlim_t value)
{
    rlimit limit;
    // The process that started us may have set a lower limit.
    if (getrlimit(resource, &limit) != 0)
        return;
    limit.rlim_max = std::min(limit.rlim_max, value);
    limit.rlim_cur = std::min(limit.rlim_cur, limit.rlim_max);
    setrlimit(resource, &limit);
}

} // namespace

void LimitProcess()
{
    Limit(RLIMIT_AS, bounds::kMostPictureMemory);
    Limit(RLIMIT_CPU, bounds::kMostPictureSeconds);
    Limit(RLIMIT_CORE, 0);
    // A reader with a thread for each processor would reserve most of the address space for its allocations.
    mallopt(M_ARENA_MAX, 1);
    // Core dump handlers check this instead.
    prctl(PR_SET_DUMPABLE, 0);
}

} // namespace kits
