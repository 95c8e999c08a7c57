// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace kits {

/// Returns the tab stops of a text, line by line: the place of the first tab stop of the line, of the second, and so
/// on.
///
/// Consecutive lines with tabs form a group; its n-th stop is the first multiple of `unit` that lies at least `gap`
/// after the widest n-th cell of the group.
///
/// @param cells  for each line the widths of its cells, which the tabs separate; a line without tabs has one cell. The
///               width after a line's last tab is ignored
/// @param unit   above 0
std::vector<std::vector<double>> TabStops(const std::vector<std::vector<double>>& cells, double unit, double gap);

} // namespace kits
