// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

class QWindow;

namespace kits {

/// Keeps windows on the desktop shown while the window manager shows the desktop (Meta+D, a button of the panel).
///
/// No window type achieves that with all window managers. XFCE's spares every window that is in no task bar; others
/// hide or cover everything except the desktop itself, each with an exception of its own. The type "desktop" is no
/// solution: a click raises the desktop's window over it.
///
/// Checks again when windows come and go and when another window manager takes over, because the exceptions depend on
/// the desktop's window and on the manager. Main thread; does nothing without an X server.
namespace StayShown {

/// How to make a window manager spare a window.
enum class Way {
    kNone,            ///< nothing to do: it spares such windows by itself, or is unknown
    kTransient,       ///< it spares windows that are transient for the desktop's window
    kTransientForAny, ///< the same; if no program has such a window, an empty one of ours will do
    kSplash           ///< it spares windows of the type "splash", and otherwise treats them as any other
};

/// @param manager  the name that the window manager gives itself
Way WayFor(std::string_view manager);

/// Keeps the window shown from now on, as long as it exists, visible or not.
void Keep(QWindow& window);

/// The toolkit has set the window's properties again, as it does when its flags change.
void LookAgain();

} // namespace StayShown

} // namespace kits
