#pragma once

#include "kits/kernel/Types.h"

#include <optional>
#include <string>

namespace kits {

/// What a desktop says of how dark it is, in as many ways as there are desktops. A plain value; decides nothing by
/// itself.
struct DarkSigns {
    uint32 portal = 0;                    ///< the portal's "color-scheme": 1 prefers dark, 2 light, others neither
    std::optional<bool> desktop;          ///< the desktop's own colours are dark
    std::string environment;              ///< GTK_THEME; empty: not set
    std::optional<std::string> themeName; ///< "Net/ThemeName" of the desktop's settings daemon
    bool prefersDark = false;             ///< "Gtk/ApplicationPreferDarkTheme" of that daemon
    bool fileIsDark = false;              ///< GTK's settings files say so (SettingsAreDark)

    /// The most certain of the signs: what the portal prefers, else the desktop's own colours, else the name of the
    /// theme, of which only a dark one says anything: names of dark themes need not tell. What overrides another in GTK
    /// does so here: the environment the daemon, that the files.
    /// @return nothing when there is no sign: then the toolkit's own colours decide
    std::optional<bool> IsDark() const;
};

/// Whether a theme's name says that it is dark: "Adwaita-dark", "Adwaita:dark", "Mint-Y-Dark-Aqua".
bool ThemeNameIsDark(const std::string& name);
/// Whether the text of a settings.ini of GTK chooses a dark theme, or the dark form of one.
bool SettingsAreDark(const std::string& ini);

} // namespace kits
