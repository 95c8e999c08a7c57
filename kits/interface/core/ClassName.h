// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <typeinfo>

namespace kits {

/// Returns the name of an object's class as in the source.
std::string ClassNameOf(const std::type_info& type);

} // namespace kits
