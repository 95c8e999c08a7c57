// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"

#include <string>
#include <vector>

namespace kits {

/// Picture files of one colour, for desktops that only accept pictures. They lie in a folder of ours among the user's
/// settings, each under the name of its colour. Any thread; waits for the disk.
namespace PlainPicture {

/// Writes one.
/// @param width, height  in pixels, from 1 to 32767
/// @return its path; "" if it could not be written
std::string Put(rgb_color color, int width, int height);

/// The path without the suffix of its kind. Programs that look for a picture under such a name try the suffixes of all
/// kinds that they can read.
std::string WithoutKind(const std::string& path);

/// True if the path is that of such a picture, even of one that has been removed.
bool IsOne(const std::string& path);

/// Removes all such pictures except these.
void RemoveOthers(const std::vector<std::string>& used);

} // namespace PlainPicture

} // namespace kits
