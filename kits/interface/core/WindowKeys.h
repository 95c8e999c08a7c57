// SPDX-License-Identifier: MIT
#pragma once

class QKeyEvent;
class QWidget;

/// The two keys that work in every window: Ctrl+W does what its close button does, also where it shows none, and Ctrl+Q
/// posts B_QUIT_REQUESTED with "shortcut" (bool, true) to the application. Main thread.
namespace kits::WindowKeys {

/// True if it was one of them and is done.
/// @param window  the one with the keyboard
bool Handle(const QKeyEvent& event, QWidget& window);

/// Handles them in a window that the toolkit has made and shown, before what has the focus there gets them.
void Watch(QWidget& window);

} // namespace kits::WindowKeys
