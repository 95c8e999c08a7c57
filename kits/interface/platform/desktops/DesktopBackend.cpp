// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopBackend.h"

#include "kits/interface/platform/desktops/DesktopEnvironments.h"
#include "kits/interface/platform/desktops/Environment.h"
#include "kits/interface/platform/desktops/X11Desktop.h"

namespace kits {

namespace {

/// @param name  of the session
/// @return null for an unknown desktop
std::unique_ptr<DesktopBackend> MakeNamed(const std::string& name, const std::string& screen)
{
    if (name == "GNOME")
        return MakeGnomeDesktop();
    if (name == "X-Cinnamon")
        return MakeGnomeDesktop(kCinnamon);
    if (name == "MATE")
        return MakeGnomeDesktop(kMate);
    if (name == "XFCE")
        return MakeXfceDesktop(screen);
    if (name == "KDE")
        return MakePlasmaDesktop();
    if (name == "LXQt")
        return MakePcmanfmDesktop();
    return nullptr;
}

} // namespace

std::unique_ptr<DesktopBackend> MakeDesktopBackend(bool isX11, const std::string& screen)
{
    std::unique_ptr<DesktopBackend> desktop;
    for (const std::string& name : Environment::List("XDG_CURRENT_DESKTOP"))
        if (desktop == nullptr)
            desktop = MakeNamed(name, screen);
    if (desktop != nullptr && desktop->IsThere())
        return desktop;
    return isX11 ? X11Desktop::Connect() : nullptr;
}

} // namespace kits
