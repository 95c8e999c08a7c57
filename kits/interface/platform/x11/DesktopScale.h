// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace kits {

class XSettings;

/// The scale in a desktop's settings. The toolkit takes it from the resolution of the fonts alone ("Xft/DPI"); GTK
/// desktops also have an integer factor for windows ("Gdk/WindowScalingFactor"), and not all of them multiply the
/// resolution by it. Main thread.
namespace DesktopScale {

/// Larger scales could show nothing useful, and the pictures of windows would take all memory.
inline constexpr double kMost = 8;

/// Returns the scale that GTK programs have with these settings, from 1 to kMost: the resolution of the fonts over 96,
/// times the factor. "Gdk/UnscaledDPI" is the resolution if "Xft/DPI" already includes the factor. Pure.
/// @param otherwise  the scale if the settings have no resolution
double Of(const XSettings& settings, double otherwise);
/// Returns the scale that the toolkit takes from the same settings. Pure.
double OfToolkit(const XSettings& settings, double otherwise);

/// Gives the toolkit the scale if it would find another one by itself; from then on always. Does nothing if the first
/// call finds one of the toolkit's own variables for scales in the environment: that is the user's wish. The windows do
/// not follow by themselves, see ScaleWatch.
void Apply(const XSettings& settings);
/// From now on the toolkit does not follow changes.
void ToolkitIsDeaf();
/// Returns to the state before the first call, for the end of the toolkit.
void Forget();

} // namespace DesktopScale

} // namespace kits
