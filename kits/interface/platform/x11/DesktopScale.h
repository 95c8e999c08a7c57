// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace kits {

class XSettings;

/// The scale that a desktop asks for in its settings. The toolkit takes it from the resolution of the fonts alone
/// ("Xft/DPI"); desktops of GTK have a whole factor for windows beside it ("Gdk/WindowScalingFactor"), and not all of
/// them multiply the resolution by it. Main thread.
namespace DesktopScale {

/// Larger scales could show nothing useful, and the pictures of windows would take all memory.
inline constexpr double kMost = 8;

/// The scale that programs of GTK have with these settings, from 1 to kMost: the resolution of the fonts over 96, times
/// the factor. "Gdk/UnscaledDPI" is the resolution where "Xft/DPI" has the factor in it already. Pure.
/// @param otherwise  the scale if the settings have no resolution
double Of(const XSettings& settings, double otherwise);
/// The scale that the toolkit takes from the same settings. Pure.
double OfToolkit(const XSettings& settings, double otherwise);

/// Gives the toolkit the scale when it would not find it by itself; from then on always. Does nothing if the first call
/// finds one of the toolkit's own variables for scales in the environment: that is the user's wish. The windows do not
/// follow by themselves, see ScaleWatch.
void Apply(const XSettings& settings);
/// Tells that the toolkit does not follow changes from here on.
void ToolkitIsDeaf();
/// Returns to the state before the first call, for the toolkit's end.
void Forget();

} // namespace DesktopScale

} // namespace kits
