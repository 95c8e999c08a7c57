// SPDX-License-Identifier: MIT
#pragma once

class QEvent;
class QWindow;

namespace kits {

/// Drags of other programs over our windows. A ForeignOffer fetches their data without waiting. A drop waits until its
/// data have arrived or a second has passed. On an X server the source gets our answer only then. On Wayland the
/// toolkit answers at once, and we carry out the drop later.
///
/// Main thread.
namespace ForeignDrag {

/// Starts to watch the X server's messages about drags.
void Start();
void Stop();

/// Call it for every event of a system window. Delivers an event of a foreign drag with a ForeignOffer in place of the
/// toolkit's data, or holds a drop back.
/// @return true if it did, so that the event itself needs no delivery
bool Deliver(QWindow& window, QEvent& event);

} // namespace ForeignDrag

} // namespace kits
