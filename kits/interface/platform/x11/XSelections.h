// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/selections/SelectionFetch.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace kits {

/// Selections of other programs on the X server. A window of ours asks for them over the toolkit's connection. The
/// toolkit's own questions wait for up to five seconds each; these wait only for the server. Main thread. HandOver and
/// Stop do nothing without an X server; the other functions need one.
namespace XSelections {

inline constexpr const char* kClipboard = "CLIPBOARD";
inline constexpr const char* kPrimary = "PRIMARY";

/// A drag of another program over our windows, as far as we know it.
struct Drag {
    uint64_t number = 0;       ///< of this drag over this window; never reused
    uint32 source = 0;         ///< its window
    uint32 time = 0;           ///< the server's time that the source expects in questions
    bool hasMoreForms = false; ///< the source's window has the list of its forms
    std::vector<uint32> forms; ///< atoms
};

/// Returns null if nobody owns it. Queries the server.
std::unique_ptr<SelectionSource> SourceOf(const char* selection);
std::unique_ptr<SelectionSource> SourceOf(const Drag& drag);

/// Hands this program's selections to the clipboard keeper, which keeps them for programs that have ended, and gives up
/// the others. At its end the toolkit would do the same and wait for the keeper for five seconds; this runs the event
/// loop for up to bounds::kLongestHandover.
void HandOver();

/// Call it before the toolkit's application object is destroyed.
void Stop();

} // namespace XSelections

} // namespace kits
