// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

class QRect;
class QWidget;

namespace kits {

/// Follows the scale of the screens while the program runs. The toolkit computes with a new one at once, and leaves
/// everything else to its programs: its windows keep the pixels that they cover, so that they have another logical
/// size, and their pictures. Main thread.
namespace ScaleWatch {

/// From here on every window follows: those of the kit by WindowImpl::CheckScale, and the toolkit's own (menus, tool
/// tips, dialogs) the same way. As long as the toolkit's application object.
void Start();
/// Has the windows follow now: those whose scale is not what it was. With the interface lock held.
void Follow();
/// Has them follow in the next turn.
void Changed();

/// The screen, in logical pixels and without panels, that has the middle of a top-level widget.
PixelRect ScreenOf(const QWidget& widget);
/// Whether the user holds a button of the pointer anywhere, over a frame of the window manager's too. Asks the system.
bool IsButtonDown();
/// Screen pixels per logical pixel where the widget is.
double ScaleOf(const QWidget& widget);
/// Gives the system's window of a top-level widget this place and size in logical pixels, and has all of it painted.
void SetGeometry(QWidget& widget, const QRect& geometry);
/// Tells a widget whose window's size the system chose (a maximised one) how large that is now, and has all of it
/// painted. It has to have a system's window, too.
void KeepSystemSize(QWidget& widget);

} // namespace ScaleWatch

} // namespace kits
