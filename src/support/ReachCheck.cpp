// SPDX-License-Identifier: MIT
#include "src/support/ReachCheck.h"

#include "kits/application/Roster.h"
#include "src/support/OneLine.h"

#include <cstdio>

bool CanReachOthers(const char* program, const char* signature)
{
    const app_obstacle obstacle = be_roster->FindObstacle(signature);
    if (obstacle.text.empty())
        return true;
    std::fprintf(stderr, "%s: %s, so %s\n", program, OneLine(obstacle.text).c_str(),
                 obstacle.isToStartsOnly ? "no other program can start this one, and two starts at once may both run"
                                         : "charts on the desktop show nothing, and commands like qel --quit find no "
                                           "running program");
    return obstacle.isToStartsOnly;
}
