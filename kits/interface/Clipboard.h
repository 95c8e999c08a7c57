#pragma once

#include <memory>

class BMessage;
class BView;

/// The clipboard, for the keyboard what a drag is for the pointer: a message lies on it in the same forms in which it
/// is dragged to other programs, and what they have put there comes back as what they would have dropped. All of this
/// in the main thread.
namespace kits {

/// Puts on it what the view gives (BView::CopyRequested). False, and the clipboard is as before, when that is nothing.
bool CopyFrom(BView* view);

/// Drops what lies on it on the view, at the place that the view names (BView::PasteRequested): the message is
/// delivered by the event loop. False when the view takes nothing, or nothing lies there that could be dropped on it.
bool PasteOnto(BView* view);

/// What lies on it; null when that is nothing that could be dropped on a view. It may come from anywhere.
std::unique_ptr<BMessage> ClipboardMessage();

} // namespace kits
