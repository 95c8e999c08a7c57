// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kits::DesktopColors {

/// True if the windows of this session's desktop are dark according to its settings files; nothing if the files do not
/// say, or the desktop has none. Reads a few small files.
std::optional<bool> AreDark();

/// The files that AreDark() depends on, including those that do not exist; none if the desktop has none.
std::vector<std::string> Files();

} // namespace kits::DesktopColors
