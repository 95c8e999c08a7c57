#include "kits/interface/desktop/DesktopBackend.h"

#include "kits/interface/desktop/GnomeDesktop.h"
#include "kits/interface/desktop/PlasmaDesktop.h"
#include "kits/interface/desktop/X11Desktop.h"
#include "kits/interface/desktop/XfceDesktop.h"

#include <cstdlib>
#include <sstream>

namespace kits {

namespace {

/// The environment that the session is said to be of; null for others.
std::unique_ptr<SettingsDesktop> MakeSettingsDesktop(const std::string& screen)
{
    const char* names = std::getenv("XDG_CURRENT_DESKTOP");
    std::istringstream list(names != nullptr ? names : "");
    for (std::string name; std::getline(list, name, ':');) {
        if (name == "GNOME")
            return std::make_unique<GnomeDesktop>();
        if (name == "X-Cinnamon")
            return std::make_unique<GnomeDesktop>(GnomeDesktop::kCinnamon);
        if (name == "MATE")
            return std::make_unique<GnomeDesktop>(GnomeDesktop::kMate);
        if (name == "XFCE")
            return std::make_unique<XfceDesktop>(screen);
        if (name == "KDE")
            return std::make_unique<PlasmaDesktop>();
    }
    return nullptr;
}

} // namespace

std::unique_ptr<DesktopBackend> MakeDesktopBackend(const std::string& platform, const std::string& screen)
{
    std::unique_ptr<SettingsDesktop> desktop = MakeSettingsDesktop(screen);
    if (desktop != nullptr && desktop->IsThere())
        return desktop;
    return platform == "xcb" ? X11Desktop::Connect() : nullptr;
}

} // namespace kits
