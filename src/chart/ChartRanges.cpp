// SPDX-License-Identifier: MIT
#include "src/chart/ChartRanges.h"

#include "kits/application/Message.h"
#include "src/sampling/ValueProvider.h"

bool FindColor(const BMessage& from, const char* key, int32 index, rgb_color* value)
{
    const void* bytes = nullptr;
    ssize_t size = 0;
    if (from.FindData(key, B_RAW_TYPE, index, &bytes, &size) != B_OK || size != 4)
        return false;
    const auto* channels = static_cast<const uint8*>(bytes);
    *value = rgb_color{channels[0], channels[1], channels[2], channels[3]};
    return true;
}

bool IsSourceArchive(const BMessage& archive, bool none)
{
    int32 target = VP_FIRST_CPU;
    int32 flags = 0;
    archive.FindInt32("Target", &target);
    archive.FindInt32("Flags", &flags);
    return (InRange("Target", target) || (none && target == VP_NONE)) && InRange("Flags", flags);
}
