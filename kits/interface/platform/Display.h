// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// The kind of display that shows the windows of this process. Only this code asks the toolkit for its platform; code
/// that differs between displays calls these functions, and stands in x11/ and wayland/. Call them once the toolkit's
/// application object exists.
namespace Display {

/// True on an X server: windows know and choose their places, there is a root window, and XServer() is not null.
bool IsX11();

/// True in a Wayland session. There
/// - windows neither know nor choose their places, and the places of their archives are left alone;
/// - windows on the desktop are ordinary ones, and a drag cannot end on the desktop;
/// - each window has a scale of its own;
/// - data of other programs come through pipes (WaylandSource).
bool IsWayland();

/// True where a window has one picture that can be written to at any time. Elsewhere the display and the toolkit take
/// turns at several.
bool HasLastingPictures();

} // namespace Display

} // namespace kits
