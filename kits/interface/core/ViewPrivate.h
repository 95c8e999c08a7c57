// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/MainThread.h"
#include "kits/interface/View.h"
#include "kits/interface/Window.h"

#include <functional>

class QMouseEvent;
class QPoint;
class QRect;
class QWidget;

/// What the kit's own controls need of a view beyond its public face.
///
/// **Widgets.** Every view in a window has one plain QWidget. It is made in the main thread when the view first comes
/// into a window, just before AttachedToWindow; WidgetCreated tells the subclass. It lives as long as the view:
/// detaching hides it and takes it out of its parent, attaching puts it back. A control puts one Qt widget into it, as
/// its child, keeps it as large as the view (kits::FillView does) and makes it the view widget's focus proxy. The view
/// widget never has a layout or a style sheet.
///
/// **Signals to messages.** Connect Qt's signal with the view's widget as context object; the slot runs in the main
/// thread with the interface lock held. Don't call program code from there directly where it can delete the control:
/// post the message (BInvoker::Invoke does) and let the loop deliver it.
///
/// **Sizes.** A view of width w covers w + 1 logical pixels: WidthOf(pixels) = pixels - 1.
///
/// **Mouse.** Presses and moves that a child widget ignores reach the view as MouseDown and MouseMoved. Transits are
/// computed for every view from the place of the pointer, whatever widget Qt gives the event to. A Qt child that should
/// not see the mouse at all is made Qt::WA_TransparentForMouseEvents.
namespace kits {

/// The view's own widget; null until it first comes into a window.
QWidget* ViewWidget(const BView* view);
/// The window's top-level widget; never null while the window lives, but in a thread other than the main one.
QWidget* WindowWidget(const BWindow* window);

/// Makes the child cover its view's widget, follow its size, and take its focus and accessible name. Takes no ownership
/// beyond Qt's parenthood.
void FillView(BView* view, QWidget* child);

/// Runs the function in the main thread with the interface lock held: at once when called there, else in a coming turn
/// of the event loop, and not at all when the view is gone by then.
void RunOnMain(BView* view, std::function<void()> function);

/// Qt's numbers in the platform's coordinates and back: a rectangle of width 100 is 101 pixels wide.
QRect ToQRect(const BRect& rect);
BRect FromQRect(const QRect& rect);
BPoint FromQPoint(const QPoint& point);

/// Sets the button that Return presses in its window, where nothing else takes that key; null for none. The function
/// does what a click on it does.
void SetDefaultButton(BWindow* window, BView* button, std::function<void()> press);

} // namespace kits
