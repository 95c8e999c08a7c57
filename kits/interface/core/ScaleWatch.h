// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

class QRect;
class QWidget;

namespace kits {

/// Follows the scale of the screens while the program runs. The toolkit uses a new scale at once, and leaves everything
/// else to its programs: its windows keep the pixels that they cover, so that their logical size changes, and their
/// pictures. Main thread.
namespace ScaleWatch {

/// From now on every window follows the scale: those of the kit by WindowImpl::CheckScale, and the toolkit's own
/// (menus, tool tips, dialogs) in the same way. Until the end of the toolkit's application object.
void Start();
/// Makes windows whose scale has changed follow now. With the interface lock held.
void Follow();
/// Makes them follow in the next turn.
void Changed();

/// Returns the screen, in logical pixels and without panels, that contains the middle of a top-level widget.
PixelRect ScreenOf(const QWidget& widget);
/// Returns whether the user holds a button of the pointer anywhere, even over a window manager's frame. Queries the
/// system.
bool IsButtonDown();
/// Returns the screen pixels per logical pixel at the widget.
double ScaleOf(const QWidget& widget);
/// Gives the system's window of a top-level widget this place and size in logical pixels, and repaints it whole.
void SetGeometry(QWidget& widget, const QRect& geometry);
/// Sets a widget to the size that the system chose for its window (a maximised one), and repaints it whole. The widget
/// must have a system's window.
void KeepSystemSize(QWidget& widget);

} // namespace ScaleWatch

} // namespace kits
