// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/DesktopWatch.h"
#include "kits/support/Color.h"

#include <functional>

namespace kits {

/// The colour of the empty desktop, as this process knows it. Nothing here waits, and nothing is connected or started
/// before the first call. With the interface lock held.
namespace DesktopColor {

/// The colour until the desktop has been read.
inline constexpr rgb_color kUnknown{51, 102, 152, 255};

/// The last known colour, kept up to date from the first call on.
rgb_color Get();
/// Calls `answer` with the current colour; see BScreen::AskDesktopColor. On the main thread, from its event loop.
void Ask(std::function<void(rgb_color)> answer);
/// Paints the desktop; see BScreen::SetDesktopColor.
void Set(rgb_color color, bool permanent);
/// Sets it for good, in place of a picture too, as the desktop's own settings do. What Set() has kept is forgotten: the
/// user wants this colour instead. Without a desktop environment it is the root window's, until the session ends.
void Change(rgb_color color);
/// Restores the desktop; see BScreen::RestoreDesktop.
void Restore();
/// Sets the function that makes the desktop, for tests; call it before any other.
void SetMaker(DesktopWatch::Maker make);
/// Ends the thread, see ~DesktopWatch, and forgets everything. Main thread.
void Stop();

} // namespace DesktopColor

} // namespace kits
