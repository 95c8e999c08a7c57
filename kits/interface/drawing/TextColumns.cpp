// SPDX-License-Identifier: MIT
#include "kits/interface/drawing/TextColumns.h"

#include <algorithm>
#include <cmath>

namespace kits {

std::vector<std::vector<double>> TabStops(const std::vector<std::vector<double>>& cells, double unit, double gap)
{
    std::vector<std::vector<double>> stops(cells.size());
    for (std::size_t first = 0; first < cells.size();) {
        std::size_t end = first;
        std::size_t columns = 0;
        while (end < cells.size() && cells[end].size() > 1)
            columns = std::max(columns, cells[end++].size() - 1);
        std::vector<double> group;
        for (std::size_t column = 0; column < columns; column++) {
            double widest = 0;
            for (std::size_t line = first; line < end; line++)
                if (column + 1 < cells[line].size())
                    widest = std::max(widest, cells[line][column]);
            const double start = group.empty() ? 0 : group.back();
            group.push_back(std::ceil((start + widest + gap) / unit) * unit);
        }
        for (std::size_t line = first; line < end; line++)
            stops[line] = group;
        first = std::max(end, first + 1);
    }
    return stops;
}

} // namespace kits
