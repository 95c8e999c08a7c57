// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QPoint;
class QWidget;

namespace kits {

/// Keeps windows at their places when one window manager takes over from another, as on a restart.
///
/// Windows of the toolkit count their places from the corner of their content, and Marco forgets that when it ends: it
/// leaves the content where the corner of the frame was. So each restart would move all windows up and to the left,
/// and MATE restarts Marco whenever its scale changes.
///
/// Main thread; nothing happens without an X server.
namespace ManagerChange {

/// Watches a window as long as it exists. It must have a system's window.
/// @param putBack  asks for the place that the content had; called in a turn of its own
void Watch(QWidget& window, std::function<void(QPoint)> putBack);

} // namespace ManagerChange

} // namespace kits
