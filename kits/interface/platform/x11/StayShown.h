// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

class QWindow;

namespace kits {

/// Keeps windows on the desktop shown while the window manager shows the desktop (Meta+D, a button of the panel).
///
/// No type of window does that on all of them. XFCE's window manager leaves every window that is in no task bar; others
/// hide or cover whatever is not the desktop itself, each with an exception of its own. The type "desktop" is none: a
/// click raises the desktop's window over it.
///
/// Looks again when windows come and go and when another window manager takes over: the exceptions hang on the
/// desktop's window and on the manager. Main thread; nothing happens without an X server.
namespace StayShown {

/// How a window manager is told.
enum class Way {
    kNone,            ///< it leaves such windows by itself, or nothing is known of it
    kTransient,       ///< it leaves what is transient for the window of the desktop
    kTransientForAny, ///< the same; where no program has such a window one of ours will do, which shows nothing
    kSplash           ///< it leaves windows of the type "splash", and treats them as others otherwise
};

/// @param manager  as the window manager names itself
Way WayFor(std::string_view manager);

/// From here on, as long as the window is there, shown or not.
void Keep(QWindow& window);

/// The toolkit has set the window's properties anew, as it does when its flags change.
void LookAgain();

} // namespace StayShown

} // namespace kits
