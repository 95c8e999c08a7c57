#pragma once

#include "kits/support/Color.h"

namespace kits {

/// The colour of the empty desktop, as this process knows it. With the interface lock held.
namespace DesktopColor {

/// While nobody has said what it is.
inline constexpr rgb_color kUnknown{51, 102, 152, 255};

rgb_color Get();
void Set(rgb_color color);

} // namespace DesktopColor

} // namespace kits
