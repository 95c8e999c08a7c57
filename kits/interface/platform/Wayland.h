// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>

namespace kits {

/// True if the windows are those of a Wayland session, where they neither know nor choose their place. After the
/// toolkit's application object was made.
inline bool IsWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace kits
