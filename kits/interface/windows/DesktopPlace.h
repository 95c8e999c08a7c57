#pragma once

#include "kits/support/Point.h"

#include <xcb/xcb.h>

/// Tells the desktop from other windows. Asks the X server. Main thread.
namespace kits::DesktopPlace {

/// The property that marks our own windows on the desktop, whose type is a normal one.
inline constexpr const char* kMark = "_KITS_DESKTOP_WINDOW";

/// Whether the desktop is topmost at a place of the screen: the root window; a window whose type is "desktop", or that
/// carries our mark; or a window without a type that covers the screen below all others, and that no task bar shows,
/// as some programs draw the desktop. Windows that only take input, as window managers have them at the edges of
/// screens, are looked through.
bool IsDesktop(xcb_connection_t* server, BPoint where);

} // namespace kits::DesktopPlace
