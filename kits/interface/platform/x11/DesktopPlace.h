// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/x11/DesktopLayer.h"

#include <xcb/xcb.h>

/// Tells the desktop from other windows. Asks the X server. Main thread.
namespace kits::DesktopPlace {

/// The property that marks our own windows on the desktop, whose type is a normal one.
inline constexpr const char* kMark = "_KITS_DESKTOP_WINDOW";

/// What shows topmost at a place of the screen. The desktop is the root window; a window whose type is "desktop"; or a
/// window without a type that covers the screen below all others, and that no task bar shows, as some programs draw the
/// desktop. Windows that only take input, as window managers have them at the edges of screens, are looked through.
DesktopLayer::Ground GroundAt(xcb_connection_t* server, BPoint where);

/// What a window says of itself: by its type or by our mark. A program where it says nothing.
DesktopLayer::Ground GroundOf(xcb_connection_t* server, xcb_window_t window);

} // namespace kits::DesktopPlace
