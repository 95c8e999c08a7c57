// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Point.h"

#include <functional>

class QWindow;

namespace kits {

/// What an X server and its window manager can be told and asked about the desktop, beyond what the toolkit does. On
/// other systems nothing happens and the answers are no. Main thread.
namespace DesktopLayer {

/// What shows topmost at a place of the screen.
enum class Ground {
    kProgram,      ///< a window of a program, or nobody can tell
    kDesktop,      ///< the bare desktop
    kDesktopWindow ///< a window of ours that belongs to the desktop
};

/// Whether this program is a client of an X server.
bool IsThere();

/// Keeps a window that is not yet shown out of task bar and pager, on all workspaces and below all others, and marks it
/// as one that belongs to the desktop.
void MarkAsDesktopWindow(const QWindow& window);
/// Has a window that is not yet shown on all workspaces.
void ShowOnAllWorkspaces(const QWindow& window);

/// Asks for a border without a title bar around a window that is not yet shown. Where a window manager shows a title
/// bar all the same there are no buttons in it.
void ShowBorderOnly(const QWindow& window);
/// Moves a window that is or was shown from another workspace to the one that the user sees. One on all workspaces
/// stays there. Asks the server.
void MoveToCurrentWorkspace(const QWindow& window);

/// Asks the server.
Ground GroundAt(BPoint where);

/// Whether transparent windows show what lies below them. Known from the first call on, which asks the server.
bool HasCompositor();
/// The function is called whenever that changes. One at a time; null for none.
void WatchCompositor(std::function<void()> changed);

} // namespace DesktopLayer

} // namespace kits
