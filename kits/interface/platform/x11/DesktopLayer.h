// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Point.h"

#include <functional>

class QWindow;

namespace kits {

/// Requests and queries about the desktop to an X server and its window manager, beyond the toolkit's. On other systems
/// the requests do nothing and the queries return false. Main thread.
namespace DesktopLayer {

/// The topmost thing at a place of the screen.
enum class Ground {
    kProgram,      ///< a window of a program, or unknown
    kDesktop,      ///< the bare desktop
    kDesktopWindow ///< a window of ours that belongs to the desktop
};

/// Keeps a window that is not shown yet out of task bar and pager, on all workspaces and below all others, and marks it
/// as one that belongs to the desktop.
void MarkAsDesktopWindow(const QWindow& window);
/// Puts a window that is not shown yet on all workspaces.
void ShowOnAllWorkspaces(const QWindow& window);

/// Asks for a border without a title bar around a window that is not shown yet. If a window manager shows a title bar
/// nevertheless, it has no buttons.
void ShowBorderOnly(const QWindow& window);
/// Moves a window that is or was shown from another workspace to the one that the user sees. A window on all workspaces
/// stays there. Queries the server.
void MoveToCurrentWorkspace(const QWindow& window);

/// Queries the server.
Ground GroundAt(BPoint where);

/// Returns whether transparent windows show what lies below them. Known from the first call on, which queries the
/// server.
bool HasCompositor();
/// Sets the function that is called whenever that changes. One at a time; null for none.
void WatchCompositor(std::function<void()> changed);

} // namespace DesktopLayer

} // namespace kits
