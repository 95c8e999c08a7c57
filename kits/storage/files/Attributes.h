// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Bounds.h"
#include "kits/support/SupportDefs.h"

#include <vector>

/// The storage of attributes of open files: with the file if the file system can do that, otherwise in this process.
/// Any thread.

namespace kits {

/// The most bytes of one attribute, without its type.
inline constexpr size_t kMaxAttributeSize = bounds::kMostAttribute - sizeof(type_code);

struct Attribute {
    type_code type = 0;
    std::vector<uint8> value;
};

/// @return B_ENTRY_NOT_FOUND if the file has none with the name, B_BAD_VALUE for a null or empty name
status_t LoadAttribute(int descriptor, const char* name, Attribute* attribute);
/// Replaces the whole attribute.
status_t StoreAttribute(int descriptor, const char* name, const Attribute& attribute);

} // namespace kits
