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

/// The part of a view that only the kit's own controls may use.
///
/// **Widgets.** Every view in a window has one plain QWidget. It is made on the main thread when the view first enters
/// a window, just before AttachedToWindow; WidgetCreated notifies the subclass. It lives as long as the view: detaching
/// hides it and removes it from its parent, attaching puts it back. A control puts one Qt widget into it as its child,
/// keeps that as large as the view (kits::FillView does this) and makes it the view widget's focus proxy. The view
/// widget never has a layout or a style sheet.
///
/// **Signals to messages.** Connect Qt's signal with the view's widget as context object; the slot runs on the main
/// thread with the interface lock held. Do not call program code directly from there if it can delete the control: post
/// the message (BInvoker::Invoke does) and let the loop deliver it.
///
/// **Sizes.** A view of width w covers w + 1 logical pixels: WidthOf(pixels) = pixels - 1.
///
/// **Mouse.** Presses and moves that a child widget ignores reach the view as MouseDown and MouseMoved. Transits are
/// computed for every view from the place of the pointer, whichever widget Qt gives the event to. Set
/// Qt::WA_TransparentForMouseEvents on a Qt child that should not see the mouse at all.
namespace kits {

/// The view's own widget; null until the view first enters a window.
QWidget* ViewWidget(const BView* view);
/// Returns the window's top-level widget; never null on the main thread while the window lives.
QWidget* WindowWidget(const BWindow* window);

/// Makes the child the parent's, and keeps it as large.
void FollowSize(QWidget* parent, QWidget* child);
/// Makes the child cover its view's widget, follow its size, and take its focus and accessible name. Takes no ownership
/// beyond Qt's parenthood.
void FillView(BView* view, QWidget* child);

/// Runs the function on the main thread with the interface lock held: at once if called there, otherwise in a coming
/// turn of the event loop, and not at all if the view is gone by then.
void RunOnMain(BView* view, std::function<void()> function);

/// Converts between Qt's numbers and the platform's coordinates: a rectangle of width 100 is 101 pixels wide.
QRect ToQRect(const BRect& rect);
BRect FromQRect(const QRect& rect);
BPoint FromQPoint(const QPoint& point);

/// Sets the button that Return presses in its window, unless something else takes that key; null for none. The function
/// does what a click on it does.
void SetDefaultButton(BWindow* window, BView* button, std::function<void()> press);

} // namespace kits
