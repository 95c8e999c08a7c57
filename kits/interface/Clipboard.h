// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"

#include <functional>
#include <memory>

class BView;

/// The clipboard, for the keyboard what a drag is for the pointer: a message lies on it in the same forms in which it
/// is dragged to other programs, and what they have put there comes back as what they would have dropped. All of this
/// in the main thread.
///
/// Another program's data come when that program sends them; nothing waits for them. Data that come after a second, or
/// that cannot be dropped on a view, are discarded with a beep.
namespace kits {

/// Puts on it what the view gives (BView::CopyRequested). False, and the clipboard is as before, when that is nothing.
bool CopyFrom(BView* view);

/// Drops the clipboard's content on the view, at the place that the view names then (BView::PasteRequested). The event
/// loop delivers the message, unless the view is gone by then.
/// @return false if the view takes nothing, or if we know at once that the clipboard holds nothing for it
bool PasteOnto(BView* view);

/// Fetches the clipboard's content, which any program may have put there.
/// @param taken  gets the message, in this call or later, and refers to others by messenger. Not called if none comes
/// @return false if we know at once that the clipboard holds nothing that could be dropped on a view
bool FetchClipboard(std::function<void(BMessage&)> taken);

} // namespace kits
