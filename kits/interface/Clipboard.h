// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"

#include <functional>
#include <memory>

class BView;

/// The clipboard, which is to the keyboard what a drag is to the pointer: a message is put on it in the same forms in
/// which it is dragged to other programs, and what other programs have put there comes back as if they had dropped it.
/// Main thread.
///
/// Data of another program arrive when that program sends them; nothing waits for them. Data that arrive after a
/// second, or that cannot be dropped on a view, are discarded with a beep.
namespace kits {

/// Puts the view's message (BView::CopyRequested) on it. If there is none, returns false and leaves the clipboard
/// unchanged.
bool CopyFrom(BView* view);

/// Drops the clipboard's content on the view, at the place that the view names at that moment (BView::PasteRequested).
/// The event loop delivers the message, unless the view is gone by then.
/// @return false if the view accepts nothing, or if it is known at once that the clipboard holds nothing for it
bool PasteOnto(BView* view);

/// Fetches the clipboard's content, which any program may have put there.
/// @param taken  gets the message, in this call or later, and must refer to objects by messenger. Not called if no
///               message arrives
/// @return false if it is known at once that the clipboard holds nothing that could be dropped on a view
bool FetchClipboard(std::function<void(BMessage&)> taken);

} // namespace kits
