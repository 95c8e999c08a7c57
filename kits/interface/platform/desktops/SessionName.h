// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kits {

/// True if the session is of this desktop: $XDG_CURRENT_DESKTOP is a list of such names.
bool IsSessionOf(const std::string& desktop);

} // namespace kits
