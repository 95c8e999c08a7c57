// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DarkSigns.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace kits {

std::optional<bool> DarkSigns::IsDark() const
{
    constexpr uint32 kPrefersDark = 1;
    constexpr uint32 kPrefersLight = 2;
    if (portal == kPrefersDark || portal == kPrefersLight)
        return portal == kPrefersDark;
    if (desktop)
        return desktop;
    const bool isDark = !environment.empty() ? ThemeNameIsDark(environment)
                        : themeName          ? prefersDark || ThemeNameIsDark(*themeName)
                                             : fileIsDark;
    return isDark ? std::optional(true) : std::nullopt;
}

bool ThemeNameIsDark(const std::string& name)
{
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    // MATE has dark themes whose names do not say so.
    if (lower == "blackmate" || lower == "highcontrastinverse")
        return true;
    const std::string dark = "dark";
    const auto isLetter = [&](size_t at) {
        return at < lower.size() && std::isalpha(static_cast<unsigned char>(lower[at])) != 0;
    };
    for (size_t at = lower.find(dark); at != std::string::npos; at = lower.find(dark, at + 1)) {
        // "BreezeDark" is dark; of "Arc-Darker" only the titles are.
        const bool isWord = at == 0 || !isLetter(at - 1) || std::isupper(static_cast<unsigned char>(name[at])) != 0;
        if (isWord && !isLetter(at + dark.size()))
            return true;
    }
    return false;
}

bool SettingsAreDark(const std::string& ini)
{
    bool dark = false;
    std::istringstream lines(ini);
    for (std::string line; std::getline(lines, line);) {
        std::erase_if(line, [](unsigned char c) { return std::isspace(c) || c == '"'; });
        const size_t sign = line.find('=');
        if (sign == std::string::npos)
            continue;
        const std::string key = line.substr(0, sign);
        const std::string value = line.substr(sign + 1);
        if (key == "gtk-application-prefer-dark-theme")
            dark = dark || value == "1" || value == "true" || value == "yes";
        else if (key == "gtk-theme-name")
            dark = dark || ThemeNameIsDark(value);
    }
    return dark;
}

} // namespace kits
