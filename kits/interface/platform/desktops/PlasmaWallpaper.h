// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kits {

/// The pictures of KDE's wallpapers. Any thread; reads files only.
namespace PlasmaWallpaper {

/// The size of a screen in pixels; 0 x 0 if it is unknown.
struct Size {
    int width = 0;
    int height = 0;
};

/// Returns the picture that a setting shows.
/// @param setting  a path or "file:" address of a picture or of a package, the name of a package, or empty: then the
///                 wallpaper of the chosen look is shown
/// @param isDark   true if windows are dark: some packages have pictures for that
/// @return the path of a picture file; nothing if there is none
std::optional<std::string> PictureOf(const std::string& setting, Size screen, bool isDark);

/// The default colour of a plain wallpaper: "#rrggbb", or "" if it is unknown.
std::string DefaultColor();

/// Chooses a picture for a screen among those whose names are their sizes, "1920x1080.png": of those with the most
/// similar shape the smallest that covers the screen, else the largest. Other names come last.
/// @return its index; -1 for an empty list
int BestOf(const std::vector<std::string>& names, Size screen);

} // namespace PlasmaWallpaper

} // namespace kits
