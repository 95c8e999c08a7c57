// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopColors.h"

#include "kits/interface/platform/desktops/Environment.h"
#include "kits/interface/platform/desktops/IniFile.h"
#include "kits/interface/platform/desktops/KdeSettings.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"

#include <string>

namespace kits::DesktopColors {

namespace {

using Environment::IsSessionOf;

std::string LxqtFile()
{
    const std::string settings = Environment::OwnSettings();
    return settings.empty() ? "" : settings + "/lxqt/lxqt.conf";
}

} // namespace

std::optional<bool> AreDark()
{
    if (IsSessionOf("KDE"))
        return KdeSettings::IsDark();
    if (!IsSessionOf("LXQt"))
        return std::nullopt;
    const std::string value = IniFile::Read(LxqtFile()).Value("Palette", "window_color").value_or("");
    const std::optional<rgb_color> color = ParseHexColor(value);
    return color ? std::optional(IsDarkColor(*color)) : std::nullopt;
}

std::vector<std::string> Files()
{
    if (IsSessionOf("KDE"))
        return KdeSettings::FilesOfIsDark();
    if (IsSessionOf("LXQt") && !LxqtFile().empty())
        return {LxqtFile()};
    return {};
}

} // namespace kits::DesktopColors
