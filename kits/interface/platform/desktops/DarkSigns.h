// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <optional>
#include <string>

namespace kits {

/// The signs of a dark desktop; each desktop has some of them. A plain value.
struct DarkSigns {
    uint32 portal = 0;                    ///< the portal's "color-scheme": 1 prefers dark, 2 light, others neither
    std::optional<bool> desktop;          ///< the desktop's own colours are dark
    std::string environment;              ///< GTK_THEME; empty: not set
    std::optional<std::string> themeName; ///< "Net/ThemeName" of the desktop's settings daemon
    bool prefersDark = false;             ///< "Gtk/ApplicationPreferDarkTheme" of that daemon
    bool fileIsDark = false;              ///< GTK's settings files say so (SettingsAreDark)

    /// Takes the most reliable sign: the portal's preference, or else the desktop's own colours, or else the theme's
    /// name. A name proves only that a theme is dark, because names of dark themes need not say so. As in GTK, the
    /// environment overrides the daemon, and the daemon the files.
    /// @return nothing if there is no sign; then the toolkit's own colours decide
    std::optional<bool> IsDark() const;
};

/// True if a theme's name says that it is dark: "Adwaita-dark", "Adwaita:dark", "Mint-Y-Dark-Aqua".
bool ThemeNameIsDark(const std::string& name);
/// True if the text of a settings.ini of GTK chooses a dark theme, or the dark form of a theme.
bool SettingsAreDark(const std::string& ini);

} // namespace kits
