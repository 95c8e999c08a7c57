// SPDX-License-Identifier: MIT
#include "src/support/MachineCheck.h"

#include "kits/kernel/SystemInfo.h"
#include "src/support/OneLine.h"

#include <cstdio>
#include <string>

bool HasMachineToRead(const char* program)
{
    std::string missing;
    const status_t status = kits::CheckSystem(&missing);
    if (status == B_OK)
        return true;
    std::fprintf(stderr, "%s: cannot read the machine in KITS_ROOT: %s: %s\n", program, OneLine(missing).c_str(),
                 kits::StatusText(status));
    return false;
}
