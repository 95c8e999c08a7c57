// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/SessionName.h"

#include <cstdlib>
#include <sstream>

namespace kits {

bool IsSessionOf(const std::string& desktop)
{
    const char* names = std::getenv("XDG_CURRENT_DESKTOP");
    std::istringstream list(names != nullptr ? names : "");
    for (std::string name; std::getline(list, name, ':');)
        if (name == desktop)
            return true;
    return false;
}

} // namespace kits
