// SPDX-License-Identifier: MIT
#include "src/chart/ChartRanges.h"

#include "kits/application/Message.h"
#include "src/sampling/ValueProvider.h"

bool IsSourceArchive(const BMessage& archive, bool none)
{
    int32 target = VP_FIRST_CPU;
    int32 flags = 0;
    archive.FindInt32("Target", &target);
    archive.FindInt32("Flags", &flags);
    return (InRange("Target", target) || (none && target == VP_NONE)) && InRange("Flags", flags);
}
