// SPDX-License-Identifier: MIT
#include "kits/application/Archivable.h"

#include "kits/application/Message.h"

bool validate_instantiation(const BMessage* archive, const char* className)
{
    if (archive == nullptr || className == nullptr)
        return false;
    for (int32 i = 0; i < kits::kClassField.Count(*archive); ++i)
        if (kits::kClassField.Get(*archive, i) == className)
            return true;
    return false;
}
