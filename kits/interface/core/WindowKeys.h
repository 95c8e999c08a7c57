// SPDX-License-Identifier: MIT
#pragma once

class QKeyEvent;
class QWidget;

/// The two keys that work in every window: Ctrl+W does what the close button does, even if the window shows none, and
/// Ctrl+Q posts B_QUIT_REQUESTED with "shortcut" (bool, true) to the application. Main thread.
namespace kits::WindowKeys {

/// Returns true if it was one of them and has been handled.
/// @param window  the one with the keyboard focus
bool Handle(const QKeyEvent& event, QWidget& window);

/// Handles them in a window that the toolkit has made and shown, before the focused widget gets them.
void Watch(QWidget& window);

} // namespace kits::WindowKeys
