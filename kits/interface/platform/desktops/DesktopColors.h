// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kits::DesktopColors {

/// Whether the windows of this session's desktop are dark, by its own settings files; nothing when they do not say or
/// the desktop has none. Reads a few small files.
std::optional<bool> AreDark();

/// The files that AreDark() depends on, those that are not there too; none where the desktop has none.
std::vector<std::string> Files();

} // namespace kits::DesktopColors
