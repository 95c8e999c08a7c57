// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>

namespace kits {

/// Returns the picture that a slideshow shows. A slideshow is a file (.xml) that desktops of the GNOME family accept as
/// a wallpaper. It lists slides and transitions, each with a duration, which repeat from a start on. If a picture has
/// several sizes, this returns the first. Any thread.
/// @param text  of the file; may be anything
/// @param when  local time, in seconds since 1970
/// @return a path, during a transition that of the more visible picture; "" if the text is no slideshow
std::string SlideAt(const std::string& text, int64 when);

} // namespace kits
