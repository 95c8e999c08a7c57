// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

class QEvent;
class QMouseEvent;
class QObject;

namespace kits {

class ViewImpl;

/// Where the pointer is and which buttons are down, as the main thread last heard; the clicks, and which view the
/// pointer is in. With the interface lock held; but for Where, Buttons and Modifiers in the main thread.
namespace Pointer {

BPoint Where(); ///< on the screen
uint32 Buttons();

/// Every event that the toolkit is about to handle: notes what tells of the pointer, and tells views that it came or
/// left.
void Watch(QObject* receiver, QEvent* event);
/// Looks at the pointer itself, for example after a drag.
void AskSystem();
/// Tells views of the pointer's place, as a move does. @param dragMessage  what is dragged over them, or null
void Moved(BWindow* window, BPoint screenPoint, const BMessage* dragMessage);

/// Hands a press or release to the view as a message.
void Press(ViewImpl& view, const QMouseEvent& event);
void Release(ViewImpl& view, const QMouseEvent& event);
/// Calls the view's hook for an input message. False for another message.
bool Dispatch(const BMessage& message, BView& view);

/// The view goes or leaves its window.
void Forget(const BView* view);

} // namespace Pointer

} // namespace kits
