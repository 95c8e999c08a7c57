#include "kits/interface/desktop/DesktopBackend.h"

#include "kits/interface/desktop/X11Desktop.h"

namespace kits {

std::unique_ptr<DesktopBackend> MakeDesktopBackend(const std::string& platform)
{
    return platform == "xcb" ? X11Desktop::Connect() : nullptr;
}

} // namespace kits
