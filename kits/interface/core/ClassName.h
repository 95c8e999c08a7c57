// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <typeinfo>

namespace kits {

/// What the class of an object is called in the source.
std::string ClassNameOf(const std::type_info& type);

} // namespace kits
