// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/SessionBus.h"

#include "kits/interface/platform/desktops/Tool.h"

#include <QAccessible>

#include <unistd.h>

#include <cstdlib>
#include <string>

namespace kits {

namespace {

constexpr const char* kAddress = "DBUS_SESSION_BUS_ADDRESS";

} // namespace

bool SessionBus::CanBeReached()
{
    if (std::getenv(kAddress) != nullptr)
        return true;
    if (const char* folder = std::getenv("XDG_RUNTIME_DIR");
        folder != nullptr && access((std::string(folder) + "/bus").c_str(), F_OK) == 0)
        return true;
    return Tool::Exists("/usr/bin/dbus-launch") || Tool::Exists("dbus-launch");
}

SessionBus::SessionBus()
    : fIsTold(!CanBeReached() && setenv(kAddress, "disabled:", 1) == 0)
{
}

SessionBus::~SessionBus()
{
    if (!fIsTold)
        return;
    QAccessible::isActive();
    unsetenv(kAddress);
}

} // namespace kits
