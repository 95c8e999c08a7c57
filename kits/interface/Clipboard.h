#pragma once

#include "kits/application/Message.h"

#include <functional>
#include <memory>

class BView;

/// The clipboard, for the keyboard what a drag is for the pointer: a message lies on it in the same forms in which it
/// is dragged to other programs, and what they have put there comes back as what they would have dropped. All of this
/// in the main thread.
///
/// What another program owns comes when that program sends it; nothing waits for it. After a second it is not taken any
/// more, and there is a beep instead, as there is if nothing comes that could be dropped on a view.
namespace kits {

/// Puts on it what the view gives (BView::CopyRequested). False, and the clipboard is as before, when that is nothing.
bool CopyFrom(BView* view);

/// Drops what lies on it on the view, at the place that the view names then (BView::PasteRequested): the message is
/// delivered by the event loop, unless the view is gone before it comes. False when the view takes nothing, or when it
/// is known at once that nothing lies there that could be dropped on it.
bool PasteOnto(BView* view);

/// Fetches what lies on it. It may come from anywhere.
/// @param taken  gets it, in this call or later, and refers to others by messenger. Not called if nothing comes
/// @return false if it is known at once that nothing lies there that could be dropped on a view
bool FetchClipboard(std::function<void(BMessage&)> taken);

} // namespace kits
