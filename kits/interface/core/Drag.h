// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/interface/Bitmap.h"
#include "kits/interface/View.h"

#include <functional>
#include <memory>

class QDropEvent;

namespace kits {

class WindowImpl;

/// Dragging a message, and receiving drags over our windows. Main thread with the interface lock held, except for
/// Queue.
namespace Drag {

/// Field of a dragged archive: the messenger of the dragged view.
inline constexpr const char* kSourceField = "kits:source";

/// Field of a dragged archive: the identity of the dragged view (string), so that it is taken once however often it is
/// dropped.
inline constexpr const char* kDragField = "kits:drag";

/// The data of a drag.
struct Request {
    BMessage message;
    BMessenger replyTo;
    BRect rect;                      ///< the outline, on the screen; not valid if there is a picture
    std::unique_ptr<BBitmap> bitmap; ///< the picture, or null
    BPoint offset;                   ///< where the pointer is in the outline or picture
    bool isFromDesktop = false;      ///< dragged from a window that belongs to the desktop
};

/// Drags the message when the outermost event loop is reached, if a button is still down then. Any thread.
void Queue(const BView& view, const BMessage& message, BRect rect, std::unique_ptr<BBitmap> bitmap, BPoint offset,
           BHandler* replyTo);
/// Returns whether the pointer drags something of ours.
bool IsUnderWay();
/// The user pressed Escape: the end that follows is no drop.
void NoteEscape();
/// The pointer is at this place of the screen.
void NoteMove(BPoint where);
/// The user released a button at this place of the screen, possibly a good while ago. Called before the toolkit handles
/// the release: an archive that is released over the desktop is not offered to the desktop's own program.
void NoteRelease(BPoint where);

/// Drags over a window's widget. A dragged archive is only for shelves, and not for those of the process from which it
/// comes. Returns whether it may be dropped here.
bool Entered(const QDropEvent& event);
bool Over(WindowImpl& window, const QDropEvent& event);
void Left();
/// Sends the message to the view under the pointer. Returns false if there is none.
bool Dropped(WindowImpl& window, const QDropEvent& event);

/// Sets the function that carries a drag out; an empty one restores the toolkit's drag. For tests.
void SetRunner(std::function<void(const Request&)> runner);

} // namespace Drag

} // namespace kits
