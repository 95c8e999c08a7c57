// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>

namespace kits {

/// Chooses the shortcuts around the toolkit that a sample takes on its way to the screen. A program that does not call
/// this uses none; it shows the same pixels with more work. May be called again. Main thread, after InitInterface.
///
/// @param choice  null: all shortcuts; "off": none; otherwise the names of some, separated by commas:
///                "copy": views are copied into their window's picture (ScreenCopy);
///                "pixels": parts of that picture go to the X server as plain pixels (ServerPixels), with "copy" only;
///                "wait": samples are awaited in place of the toolkit's dispatcher (DispatcherWait)
void UseShortcuts(const char* choice = std::getenv("KITS_SHORTCUTS"));

} // namespace kits
