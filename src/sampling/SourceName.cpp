// SPDX-License-Identifier: MIT
#include "src/sampling/SourceName.h"

#include "src/support/Tr.h"

std::string SourceName(vptarget_t target, int32 flags)
{
    return ValueProvider::Name(target, flags, Tr);
}
