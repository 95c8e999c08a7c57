// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace kits {

/// Where the tabs of a text lead, line by line: the place of the first tab stop of the line, of the second, and so on.
///
/// Lines that follow one another and have tabs make a group; its n-th stop is the first multiple of `unit` that the
/// widest n-th cell of the group leaves free by `gap` at least.
///
/// @param cells  for each line the widths of its cells, which the tabs divide; a line without tabs has one cell. The
///               width behind a line's last tab plays no part
/// @param unit   above 0
std::vector<std::vector<double>> TabStops(const std::vector<std::vector<double>>& cells, double unit, double gap);

} // namespace kits
