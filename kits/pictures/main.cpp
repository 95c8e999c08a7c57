// SPDX-License-Identifier: MIT
#include "kits/kernel/Bounds.h"
#include "kits/pictures/Average.h"

#include <QGuiApplication>

#include <malloc.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

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

/// Limits what this process can do from now on, whatever a broken or hostile file makes a library do: 1 GiB of address
/// space, five seconds of processor time, no core dump. At a limit an allocation fails, or the process ends. Call it
/// before anything else.
void LimitProcess()
{
    Limit(RLIMIT_AS, kits::bounds::kMostPictureMemory);
    Limit(RLIMIT_CPU, kits::bounds::kMostPictureSeconds);
    Limit(RLIMIT_CORE, 0);
    // A reader with a thread for each processor would reserve most of the address space for its allocations.
    mallopt(M_ARENA_MAX, 1);
    // Core dump handlers check this instead.
    prctl(PR_SET_DUMPABLE, 0);
}

} // namespace

/// average-picture FILE...: prints the average of the first file that is a picture: red, green, blue and opacity, each
/// from 0 to 65535, in one line. Exits with 1 if none is.
int main(int argc, char** argv)
{
    LimitProcess();
    // No display and no desktop style: drawings only need fonts, for their text.
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    for (const char* variable : {"QT_QPA_PLATFORMTHEME", "DISPLAY", "WAYLAND_DISPLAY"})
        unsetenv(variable);
    int own = 1;
    const QGuiApplication application(own, argv);
    for (int i = 1; i < argc; i++) {
        if (const std::optional<kits::Average> average = kits::AverageOf(argv[i])) {
            std::printf("%u %u %u %u\n", average->red, average->green, average->blue, average->alpha);
            return EXIT_SUCCESS;
        }
    }
    return EXIT_FAILURE;
}
