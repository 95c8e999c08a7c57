// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>

namespace kits {

/// The picture that a slideshow shows: a file (.xml) that desktops of the GNOME family take for a wallpaper. It lists
/// slides and transitions between two, each with a duration, from a start on, again and again; a picture may be there
/// in several sizes, of which this is the first. Any thread.
/// @param text  of the file; may be anything
/// @param when  local time, in seconds since 1970
/// @return a path; of a transition the picture that is more to be seen. "" when the text is no slideshow
std::string SlideAt(const std::string& text, int64 when);

} // namespace kits
