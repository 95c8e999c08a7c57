#include "src/support/MachineCheck.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "kits/kernel/SystemInfo.h"

bool HasMachineToRead(const char* program)
{
    std::string missing;
    const status_t status = kits::CheckSystem(&missing);
    if (status == B_OK)
        return true;
    // It is one line whatever the name holds.
    std::replace_if(
        missing.begin(), missing.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
    std::fprintf(stderr, "%s: cannot read the machine in KITS_ROOT: %s: %s\n", program, missing.c_str(),
                 kits::StatusText(status));
    return false;
}
