// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Bounds.h"
#include "kits/support/SupportDefs.h"

#include <vector>

/// Where attributes of open files are kept: with the file where the file system can, else in this process. Any thread.

namespace kits {

/// Most bytes of one attribute, its type not counted.
inline constexpr size_t kMaxAttributeSize = bounds::kMostAttribute - sizeof(type_code);

struct Attribute {
    type_code type = 0;
    std::vector<uint8> value;
};

/// @return B_ENTRY_NOT_FOUND when the file has none of the name, B_BAD_VALUE for a null or empty name
status_t LoadAttribute(int descriptor, const char* name, Attribute* attribute);
/// Replaces the attribute whole.
status_t StoreAttribute(int descriptor, const char* name, const Attribute& attribute);

} // namespace kits
