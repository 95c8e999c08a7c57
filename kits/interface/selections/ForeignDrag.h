#pragma once

class QEvent;
class QWindow;

namespace kits {

/// Drags of other programs over our windows. Their data are fetched without waiting, see ForeignOffer. A drop whose
/// data have not come is held back until they come or a second is over: on an X server the program that drags is told
/// so long later what became of it; on Wayland, where the toolkit tells it at once, the drop is carried out later.
///
/// Main thread.
namespace ForeignDrag {

/// Sees what the X server tells of drags.
void Start();
void Stop();

/// For every event of a window of the system's: has one of a foreign drag delivered in its form with a ForeignOffer.
/// @return true if that was done, or is held back, and the event itself needs no delivery
bool Deliver(QWindow& window, QEvent& event);

} // namespace ForeignDrag

} // namespace kits
