#pragma once

#include "kits/interface/selections/SelectionFetch.h"

#include <memory>

class QMimeData;

namespace kits {

/// What another program of a Wayland session offers. The owner writes to a pipe, which the event loop reads as data
/// come. The toolkit has no public call for that: its own reads the pipe to its end and waits for up to a second, as
/// often as there are forms. So its internal one, which only hands the pipe to the owner, is looked up at run time; its
/// place is checked before it is called.
namespace WaylandSource {

/// Null if these are no data of a Wayland session, or of a toolkit that is built in another way.
/// @param offered  of the toolkit; may go before the source does
std::unique_ptr<SelectionSource> Of(const QMimeData& offered);

} // namespace WaylandSource

} // namespace kits
