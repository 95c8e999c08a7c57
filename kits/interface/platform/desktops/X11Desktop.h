// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/DesktopBackend.h"

#include <utility>

namespace kits {

/// The X server at $DISPLAY. Every call opens a connection of its own.
namespace X11Desktop {

/// The root window. Its picture is a pixmap. By custom, a program that sets the picture writes the pixmap's number into
/// properties of the root window, and programs that show the picture watch these properties. A program without that
/// custom leaves the number of the picture before, so the property only counts while the root window shows that
/// picture. A background that no property names can be restored only if it is one colour.
///
/// Paint gives the root window a pixmap of ours, which outlives the process. The pixmap before stays alive, and Restore
/// gives it back to the root window. Change frees that pixmap, as every program does that sets a background for good.
/// @return null if there is no such server, or it has no true colours
std::unique_ptr<DesktopBackend> Connect();
/// Returns the workspace that the window manager shows, from 0 on; 0 if it does not say.
int32 CurrentWorkspace();
/// Returns width and height of all monitors together, in pixels; nothing without a server.
std::optional<std::pair<int, int>> Size();

} // namespace X11Desktop

} // namespace kits
