// SPDX-License-Identifier: MIT
#include "src/chart/ChartTip.h"

#include <cstdio>

void ChartTip::AddSource(rgb_color color, const std::string& name, const std::string& value)
{
    char swatch[80];
    std::snprintf(swatch, sizeof(swatch), "<span style=\"background-color:#%02x%02x%02x\">&nbsp;&nbsp;&nbsp;</span> ",
                  color.red, color.green, color.blue);
    // A tool tip that may break its lines becomes narrow.
    fText += fText.empty() ? "<qt><p style=\"white-space:nowrap\">" : "<br>";
    fText += swatch;
    fText += name + "&nbsp; " + value;
}
