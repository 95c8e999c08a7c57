// SPDX-License-Identifier: MIT
#include "kits/interface/platform/Display.h"

#include <QGuiApplication>

namespace kits::Display {

bool IsX11()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

bool IsWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

bool HasLastingPictures()
{
    static const bool has = IsX11() || QGuiApplication::platformName() == QLatin1String("offscreen");
    return has;
}

} // namespace kits::Display
