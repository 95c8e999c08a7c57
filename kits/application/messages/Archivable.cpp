// SPDX-License-Identifier: MIT
#include "kits/application/Archivable.h"

#include "kits/application/Message.h"

#include <cstring>

bool validate_instantiation(const BMessage* archive, const char* className)
{
    if (archive == nullptr || className == nullptr)
        return false;
    const char* name;
    for (int32 i = 0; archive->FindString("class", i, &name) == B_OK; ++i)
        if (strcmp(name, className) == 0)
            return true;
    return false;
}
