#include "kits/interface/screens/DesktopColor.h"

namespace kits::DesktopColor {

namespace {

rgb_color sColor = kUnknown;

} // namespace

rgb_color Get()
{
    return sColor;
}

void Set(rgb_color color)
{
    // A desktop has nothing below it that could shine through.
    color.alpha = 255;
    sColor = color;
}

} // namespace kits::DesktopColor
