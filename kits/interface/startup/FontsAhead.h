// SPDX-License-Identifier: MIT
#pragma once

#include <thread>

namespace kits {

/// Reads the settings of the system's fonts, a hundred small files, beside the rest of the start. The toolkit reads
/// them when it measures its first text, and then finds them cached. Does nothing if the toolkit uses other fonts.
/// Nothing may change the environment until the thread has ended.
/// @return the thread that reads them; its destructor waits for its end
std::jthread ReadFontsAhead();

} // namespace kits
