// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

class QEvent;
class QMouseEvent;
class QObject;

namespace kits {

class ViewImpl;

/// The pointer's place and the pressed buttons, according to the main thread's last event; the clicks, and the view
/// that contains the pointer. With the interface lock held; except for Where and Buttons, on the main thread.
namespace Pointer {

BPoint Where(); ///< on the screen
uint32 Buttons();

/// Call it for every event that the toolkit is about to handle: records what the event says about the pointer, and
/// notifies views that the pointer enters or leaves.
void Watch(QObject* receiver, QEvent* event);
/// Queries the pointer itself, for example after a drag.
void AskSystem();
/// Notifies views of the pointer's place, as a move does.
/// @param dragMessage  the message that is dragged over them, or null
void Moved(BWindow* window, BPoint screenPoint, const BMessage* dragMessage);

/// Passes a press or release to the view as a message.
void Press(ViewImpl& view, const QMouseEvent& event);
void Release(ViewImpl& view, const QMouseEvent& event);
/// Calls the view's hook for an input message. Returns false for any other message.
bool Dispatch(const BMessage& message, BView& view);

/// The view is destroyed or leaves its window.
void Forget(const BView* view);

} // namespace Pointer

} // namespace kits
