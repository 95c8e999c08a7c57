#pragma once

#include "kits/interface/selections/SelectionFetch.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QMimeData;

namespace kits {

/// What other programs own: the clipboard, the primary selection, and what they drag. Nothing here waits. Main thread,
/// with the interface lock held.
namespace Selections {

enum class Name { kClipboard, kPrimary };

/// The toolkit's data if it has them without asking anybody: this program owns them, or the platform keeps them here.
/// Null otherwise, and if nobody owns any.
const QMimeData* AtHand(Name name);
/// Null if this program owns it, or nobody.
std::unique_ptr<SelectionSource> SourceOf(Name name);
/// True if there may be a text: it is known only of what is at hand.
bool MayHaveText(Name name);
/// True if there is a primary selection on this display.
bool HasPrimary();
/// What another program drags, by the toolkit's way to it.
std::unique_ptr<SelectionSource> SourceOf(const QMimeData& dragged);

/// Fetches in the first of the wanted forms that can be used, within bounds::kLongestFetch.
/// @param ended  called once, possibly in this call; refers to others by token
/// @return a number to give it up with, 0 if it is over already
uint64_t Fetch(std::unique_ptr<SelectionSource> source, std::vector<SelectionForm> wanted, SelectionFetch::Use use,
               std::function<void(SelectionFetch::State)> ended);
/// Nothing is called any more. Nothing happens for a fetch that is over.
void Cancel(uint64_t fetch);

/// The forms of a text, the preferred one first.
std::vector<SelectionForm> TextForms();
/// A text of such a form; what is no UTF-8 is taken for Latin-1.
std::string TextOf(const std::string& data);

/// Gives up all fetches, and leaves what this program owns to the one that keeps it, if there is one. That may run the
/// event loop once more.
void Stop();

} // namespace Selections

} // namespace kits
