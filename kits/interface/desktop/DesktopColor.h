#pragma once

#include "kits/support/Color.h"

namespace kits {

/// The colour of the empty desktop, as this process knows it. Nothing here waits, and nothing is connected or started
/// before the first call. With the interface lock held.
namespace DesktopColor {

/// While nobody has said what it is.
inline constexpr rgb_color kUnknown{51, 102, 152, 255};

/// The last known one; kept true from the first call on.
rgb_color Get();
/// Paints the desktop; see BScreen::SetDesktopColor.
void Set(rgb_color color, bool permanent);
/// Puts the desktop back; see BScreen::RestoreDesktop.
void Restore();
/// Forgets everything, after waiting for what is under way. Main thread.
void Forget();

} // namespace DesktopColor

} // namespace kits
