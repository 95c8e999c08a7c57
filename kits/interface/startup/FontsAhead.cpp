// SPDX-License-Identifier: MIT
#include "kits/interface/startup/FontsAhead.h"

#include <dlfcn.h>

#include <system_error>

namespace kits {

std::jthread ReadFontsAhead()
{
    // The library is the toolkit's: if the toolkit was built without it, nothing is needed.
    const auto read = reinterpret_cast<int (*)()>(dlsym(RTLD_DEFAULT, "FcInit"));
    if (read == nullptr)
        return {};
    try {
        return std::jthread([read] { read(); });
    } catch (const std::system_error&) {
        // No thread is available: the toolkit reads the fonts when it needs them.
        return {};
    }
}

} // namespace kits
