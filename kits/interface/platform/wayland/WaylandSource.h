// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/selections/SelectionFetch.h"

#include <memory>

class QMimeData;

namespace kits {

/// The data that another program of a Wayland session offers. The owner writes to a pipe, which the event loop reads as
/// data arrive. The toolkit's public call reads the pipe to its end and waits for up to a second for each form. Its
/// internal call only hands the pipe to the owner; we look it up at run time and check its place before calling it.
namespace WaylandSource {

/// Returns null if these are no data of a Wayland session, or of a toolkit that is built differently.
/// @param offered  the toolkit's; may be destroyed before the source
std::unique_ptr<SelectionSource> Of(const QMimeData& offered);

} // namespace WaylandSource

} // namespace kits
