// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QPoint;
class QWidget;

namespace kits {

/// Keeps windows in place when one window manager takes over from another, as on a restart.
///
/// The toolkit reports the place of a window by the corner of its content, and Marco ignores that when it ends: it
/// moves the content to the corner of the frame. So each restart would move all windows up and to the left, and MATE
/// restarts Marco whenever its scale changes.
///
/// Main thread; does nothing without an X server.
namespace ManagerChange {

/// Watches a window as long as it exists. The window must have a window of the system.
/// @param putBack  restores the given place of the content; called in a turn of its own
void Watch(QWidget& window, std::function<void(QPoint)> putBack);

} // namespace ManagerChange

} // namespace kits
