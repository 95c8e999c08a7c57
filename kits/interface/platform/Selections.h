// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/selections/SelectionFetch.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QMimeData;

namespace kits {

/// Access to data of other programs: the clipboard, the primary selection, drags. Nothing here waits. Main thread, with
/// the interface lock held.
namespace Selections {

enum class Name { kClipboard, kPrimary };

/// The data if this process holds them: this program owns them, or the platform keeps them here. Else null.
const QMimeData* AtHand(Name name);
/// Null if this program owns the selection, or nobody does.
std::unique_ptr<SelectionSource> SourceOf(Name name);
/// True if there may be a text. Only for data of this process is the answer certain.
bool MayHaveText(Name name);
/// True if there is a primary selection on this display.
bool HasPrimary();
/// The source of dragged data, through the toolkit.
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
/// Decodes a text of such a form, in UTF-8; bytes that are not UTF-8 are read as Latin-1.
std::string TextOf(const std::string& data);

/// Gives up all fetches, and hands this program's selections to the clipboard keeper, if there is one. May run the
/// event loop once more.
void Stop();

} // namespace Selections

} // namespace kits
