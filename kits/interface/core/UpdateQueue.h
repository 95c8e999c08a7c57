// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

class ViewImpl;
class WindowImpl;

/// The views that have something to be brought to the screen. Emptied once per turn of the event loop, so that
/// everything that was drawn in a turn shows together. With the interface lock held.
namespace UpdateQueue {

/// Any thread. Wakes the main thread if need be.
void Add(ViewImpl& view);
/// To be called before the view goes.
void Remove(ViewImpl& view);

/// Main thread: brings widgets to the state of their views, calls frame hooks, has Draw called for what is invalid and
/// hands what changed to the toolkit. Views whose window can't be seen are only drawn when it comes.
void Flush();
/// The same, unless a message is being dispatched: then it happens in the turn's end.
void FlushIfIdle();
/// Has all views of a window drawn, seen or not.
void DrawWindow(WindowImpl& window);

} // namespace UpdateQueue

} // namespace kits
