// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

namespace kits {

/// Makes and shows an empty window of the type "desktop", for a session in which no program has one: windows that stay
/// shown while the desktop is shown are transient for it. It is one pixel large, lies beside the screen, and takes
/// neither focus nor pointer. The caller flushes, and destroys the window or leaves that to the end of the connection.
/// Main thread.
/// @param server  the toolkit's connection
xcb_window_t MakeOwnDesktop(xcb_connection_t* server);

} // namespace kits
