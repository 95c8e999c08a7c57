// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// A part of a view's picture that assistive technology names by itself, for example a bar of a chart.
struct AccessiblePart {
    std::string name;
    std::string value; ///< as text
    double share = 0;  ///< the same as a fraction of the whole, 0 to 1
};
