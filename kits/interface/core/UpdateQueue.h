// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

class ViewImpl;
class WindowImpl;

/// The views that must be brought to the screen. Emptied once per turn of the event loop, so that all drawing of a turn
/// shows together. With the interface lock held.
namespace UpdateQueue {

/// Any thread. Wakes the main thread if necessary.
void Add(ViewImpl& view);
/// Call it before the view is destroyed.
void Remove(ViewImpl& view);

/// Main thread: updates the views' widgets, calls frame hooks, calls Draw for invalid areas, and passes changed areas
/// to the toolkit. Views in an invisible window are drawn only when the window appears.
void Flush();
/// Does the same, unless a message is being dispatched: then it happens at the end of the turn.
void FlushIfIdle();
/// Draws all views of a window, visible or not.
void DrawWindow(WindowImpl& window);

} // namespace UpdateQueue

} // namespace kits
