// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

namespace kits {

/// Returns the toolkit's connection to the X server; null if the display is another one. Main thread.
xcb_connection_t* XServer();

} // namespace kits
