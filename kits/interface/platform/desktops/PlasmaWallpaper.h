// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kits {

/// The pictures of KDE's wallpapers. Any thread; reads files only.
namespace PlasmaWallpaper {

/// The size of a screen in pixels; 0 x 0 when it is not known.
struct Size {
    int width = 0;
    int height = 0;
};

/// The picture that is shown for a setting.
/// @param setting  a path or "file:" address of a picture or of a package, the name of a package, or empty: then the
///                 wallpaper of the chosen look is shown
/// @param isDark   whether windows are dark: some packages have pictures for that
/// @return the path of a picture file; nothing if there is none
std::optional<std::string> PictureOf(const std::string& setting, Size screen, bool isDark);

/// What a plain wallpaper shows when nobody has chosen its colour: "#rrggbb", or empty when that cannot be told.
std::string DefaultColor();

/// Of pictures that are named after their size, "1920x1080.png", the one for this screen: of the shape that is most
/// like it, the smallest that covers it, else the largest. Others come last. -1 if there are none.
int BestOf(const std::vector<std::string>& names, Size screen);

} // namespace PlasmaWallpaper

} // namespace kits
