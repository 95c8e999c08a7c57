// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/x11/DesktopLayer.h"

#include <xcb/xcb.h>

/// Distinguishes the desktop from other windows. Queries the X server. Main thread.
namespace kits::DesktopPlace {

/// The property that marks our own windows on the desktop, whose type is a normal one.
inline constexpr const char* kMark = "_KITS_DESKTOP_WINDOW";

/// Returns the topmost thing at a place of the screen. The desktop is the root window; a window whose type is
/// "desktop"; or a window without a type that covers the screen below all others and is in no task bar, as some
/// programs draw the desktop. Windows that only take input, which window managers place at the edges of screens, are
/// ignored.
DesktopLayer::Ground GroundAt(xcb_connection_t* server, BPoint where);

/// Returns what a window declares itself to be: by its type or by our mark. A program if it declares nothing.
DesktopLayer::Ground GroundOf(xcb_connection_t* server, xcb_window_t window);

} // namespace kits::DesktopPlace
