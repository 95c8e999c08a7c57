// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/SessionBus.h"

#include <QAccessible>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace kits {

namespace {

constexpr const char* kAddress = "DBUS_SESSION_BUS_ADDRESS";

/// Returns whether one of the folders, separated by ':', has such a program.
bool HasProgram(const std::string& folders, const char* name)
{
    for (size_t begin = 0; begin <= folders.size();) {
        const size_t end = std::min(folders.find(':', begin), folders.size());
        if (access((folders.substr(begin, end - begin) + '/' + name).c_str(), X_OK) == 0)
            return true;
        begin = end + 1;
    }
    return false;
}

} // namespace

bool SessionBus::CanBeReached()
{
    if (std::getenv(kAddress) != nullptr)
        return true;
    if (const char* folder = std::getenv("XDG_RUNTIME_DIR");
        folder != nullptr && access((std::string(folder) + "/bus").c_str(), F_OK) == 0)
        return true;
    const char* folders = std::getenv("PATH");
    return HasProgram(folders != nullptr ? std::string("/usr/bin:") + folders : "/usr/bin", "dbus-launch");
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
