// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// Something that a view shows and assistive technology names by itself, a bar of a chart for example.
struct AccessiblePart {
    std::string name;
    std::string value; ///< as text
    double share = 0;  ///< the same as a part of the whole, 0 to 1
};
