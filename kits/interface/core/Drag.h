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

/// Dragging a message, and taking what is dragged over our windows. Main thread but for Queue, with the interface lock
/// held.
namespace Drag {

/// Of a dragged archive: the messenger of what it stands for.
inline constexpr const char* kSourceField = "kits:source";

/// Of a dragged archive: the identity of what it stands for (string), so that it is taken once however often it comes.
inline constexpr const char* kDragField = "kits:drag";

/// What is dragged.
struct Request {
    BMessage message;
    BMessenger replyTo;
    BRect rect;                      ///< the outline, on the screen; not valid when there is a picture
    std::unique_ptr<BBitmap> bitmap; ///< the picture, or null
    BPoint offset;                   ///< where the pointer is in the outline or picture
    bool isFromDesktop = false;      ///< dragged from a window that belongs to the desktop
};

/// Has the message dragged when the outermost event loop is reached, if a button is still down then. Any thread.
void Queue(const BView& view, const BMessage& message, BRect rect, std::unique_ptr<BBitmap> bitmap, BPoint offset,
           BHandler* replyTo);
/// Whether the pointer drags something of ours.
bool IsUnderWay();
/// The user pressed Escape: what ends now is no drop.
void NoteEscape();
/// The pointer is at this place of the screen.
void NoteMove(BPoint where);
/// The user released a button at this place of the screen, possibly a good while ago. Called before the toolkit handles
/// the release: an archive that is released over the desktop is not offered to the desktop's own program.
void NoteRelease(BPoint where);

/// Drags over a window's widget; a dragged archive is only for shelves, and not for those of the process that it comes
/// from: whether it may be dropped here.
bool Entered(const QDropEvent& event);
bool Over(WindowImpl& window, const QDropEvent& event);
void Left();
/// Sends the message to the view under the pointer. False when there is none.
bool Dropped(WindowImpl& window, const QDropEvent& event);

/// What carries a drag out; the toolkit's drag when empty. For tests.
void SetRunner(std::function<void(const Request&)> runner);

} // namespace Drag

} // namespace kits
