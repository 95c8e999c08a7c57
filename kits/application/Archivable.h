// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"

namespace kits {

/// The names of the archived object's class and of those of its bases that archive themselves.
inline const Field<std::string> kClassField("class", 0, 1024, Outside::kLeftOut, kMostNumber);
/// The signature of the program that can make an object of the archive.
inline const Field<std::string> kAddOnField("add_on", 0, 1024);

} // namespace kits

/// True if one of the archive's "class" strings is this name.
bool validate_instantiation(const BMessage* archive, const char* className);
