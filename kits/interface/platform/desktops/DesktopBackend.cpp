// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopBackend.h"

#include "kits/interface/platform/desktops/GnomeDesktop.h"
#include "kits/interface/platform/desktops/PcmanfmDesktop.h"
#include "kits/interface/platform/desktops/PlasmaDesktop.h"
#include "kits/interface/platform/desktops/X11Desktop.h"
#include "kits/interface/platform/desktops/XfceDesktop.h"

#include <cstdlib>
#include <sstream>
#include <utility>

namespace kits {

namespace {

template <class Desktop> std::unique_ptr<DesktopBackend> IfThere(std::unique_ptr<Desktop> desktop)
{
    return desktop->IsThere() ? std::move(desktop) : nullptr;
}

/// Returns the backend of the desktop environment that the session names; null for an unknown one, and for one whose
/// tool does not answer.
std::unique_ptr<DesktopBackend> MakeSettingsDesktop(const std::string& screen)
{
    const char* names = std::getenv("XDG_CURRENT_DESKTOP");
    std::istringstream list(names != nullptr ? names : "");
    for (std::string name; std::getline(list, name, ':');) {
        if (name == "GNOME")
            return IfThere(std::make_unique<GnomeDesktop>());
        if (name == "X-Cinnamon")
            return IfThere(std::make_unique<GnomeDesktop>(GnomeDesktop::kCinnamon));
        if (name == "MATE")
            return IfThere(std::make_unique<GnomeDesktop>(GnomeDesktop::kMate));
        if (name == "XFCE")
            return IfThere(std::make_unique<XfceDesktop>(screen));
        if (name == "KDE")
            return IfThere(std::make_unique<PlasmaDesktop>());
        if (name == "LXQt")
            return IfThere(std::make_unique<PcmanfmDesktop>());
    }
    return nullptr;
}

} // namespace

std::unique_ptr<DesktopBackend> MakeDesktopBackend(bool isX11, const std::string& screen)
{
    if (std::unique_ptr<DesktopBackend> desktop = MakeSettingsDesktop(screen))
        return desktop;
    return isX11 ? X11Desktop::Connect() : nullptr;
}

} // namespace kits
