// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/selections/SelectionFetch.h"

#include <memory>

class QMimeData;

namespace kits {

/// Access to data of other programs: the clipboard, the primary selection, drags. Nothing here waits. Main thread, with
/// the interface lock held.
namespace Selections {

enum class Name { kClipboard, kPrimary };

/// The data, if this process holds them: this program owns them, or the platform keeps them here. Otherwise null.
const QMimeData* AtHand(Name name);
/// Null if this program owns the selection, or nobody does.
std::unique_ptr<SelectionSource> SourceOf(Name name);
/// Returns true if there may be a text. The answer is certain only for data of this process.
bool MayHaveText(Name name);
/// Returns true if this display has a primary selection.
bool HasPrimary();
/// Returns the source of dragged data, through the toolkit.
std::unique_ptr<SelectionSource> SourceOf(const QMimeData& dragged);

/// Cancels all fetches, and hands this program's selections to the clipboard keeper, if there is one. May run the event
/// loop once more.
void Stop();

} // namespace Selections

} // namespace kits
