// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/selections/SelectionFetch.h"

#include <cstdint>
#include <memory>
#include <vector>

struct xcb_client_message_event_t;

namespace kits {

/// Selections of other programs on the X server, asked for over the toolkit's connection by a window of our own. The
/// toolkit's own questions wait for up to five seconds each; these wait for nobody but the server. Main thread.
namespace XSelections {

enum class Name { kClipboard, kPrimary, kDrag };

/// A drag of another program over our windows, as far as we know it.
struct Drag {
    uint64_t number = 0;       ///< of this drag over this window, never the same again
    uint32 source = 0;         ///< its window
    uint32 time = 0;           ///< of the server, which the source wants to hear in questions
    bool hasMoreForms = false; ///< the source's window has the list of its forms
    std::vector<uint32> forms; ///< atoms
};

/// True if the display is an X server.
bool IsHere();
/// False if nobody owns it. Asks the server.
bool HasOwner(Name name);
/// Null if nobody owns it.
std::unique_ptr<SelectionSource> SourceOf(Name name);
std::unique_ptr<SelectionSource> SourceOf(const Drag& drag);

/// Hands this program's selections to the clipboard keeper, which keeps them for programs that have ended, and gives up
/// the rest. The toolkit would do the same at its end and wait for the keeper for five seconds; this runs the event
/// loop for up to bounds::kLongestHandover.
void HandOver();

/// Before the toolkit's application object goes.
void Stop();

} // namespace XSelections

} // namespace kits
