#include "src/chart/ChartTip.h"

#include <cstdio>

void ChartTip::AddSource(rgb_color color, const std::string& name, double share)
{
    char swatch[80];
    std::snprintf(swatch, sizeof(swatch), "<span style=\"background-color:#%02x%02x%02x\">&nbsp;&nbsp;&nbsp;</span> ",
                  color.red, color.green, color.blue);
    char value[32];
    std::snprintf(value, sizeof(value), "%.1f %%", share * 100);
    fText += fText.empty() ? "<qt>" : "<br>";
    fText += swatch;
    fText += name + "&nbsp; " + value;
}
