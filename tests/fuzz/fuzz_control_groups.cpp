// SPDX-License-Identifier: MIT
#include "kits/kernel/record/MachineTexts.h"
#include "tests/fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const auto group = kits::ParsePidsGroup(TextOf(data, size));
    Expect(!group.has_value() || (group->path.starts_with('/') && group->path.find('\n') == std::string::npos));
    return 0;
}
