// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/XServer.h"

#include <QGuiApplication>

namespace kits {

xcb_connection_t* XServer()
{
    const auto* x11 = qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 != nullptr ? x11->connection() : nullptr;
}

} // namespace kits
