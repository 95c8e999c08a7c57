// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/PlasmaWallpaper.h"

#include "kits/interface/platform/desktops/IniFile.h"
#include "kits/interface/platform/desktops/KdeSettings.h"
#include "kits/interface/platform/desktops/PictureFile.h"
#include "kits/kernel/Bounds.h"
#include "kits/storage/ReadSmallFile.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <set>
#include <string_view>
#include <tuple>

namespace kits::PlasmaWallpaper {

namespace {

namespace fs = std::filesystem;

/// Precedes the value of a setting's default.
constexpr std::string_view kStart = "<default>";
constexpr std::string_view kEnd = "</default>";

constexpr const char* kFirstLook = "org.kde.breeze.desktop";
constexpr const char* kFirstPackage = "Next";

/// Returns the wallpaper of the chosen look.
std::string DefaultSetting()
{
    const std::string look = KdeSettings::Value("kdeglobals", "KDE", "LookAndFeelPackage").value_or(kFirstLook);
    for (const std::string& name : {look, std::string(kFirstLook)}) {
        const auto defaults = KdeSettings::DataFile("plasma/look-and-feel/" + name + "/contents/defaults");
        if (!defaults)
            continue;
        const std::optional<std::string> image = IniFile::Read(*defaults).Value("Wallpaper", "Image");
        if (image && !image->empty())
            return *image;
    }
    return kFirstPackage;
}

bool IsPictureName(const fs::path& path)
{
    std::string ending = path.extension();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    static const std::set<std::string> endings{".png", ".jpg",  ".jpeg", ".svg",  ".svgz", ".webp", ".bmp",
                                               ".gif", ".tiff", ".avif", ".heif", ".jxl",  ".ppm"};
    return endings.count(ending) != 0;
}

std::optional<std::string> BestIn(const fs::path& folder, Size screen)
{
    std::vector<std::string> names;
    for (const fs::path path : FilesOf(folder))
        if (IsPictureName(path))
            names.push_back(path.filename());
    const int best = BestOf(names, screen);
    return best < 0 ? std::nullopt : std::optional((folder / names[static_cast<size_t>(best)]).string());
}

std::optional<std::string> PictureOfPackage(const fs::path& package, Size screen, bool isDark)
{
    const auto dark = isDark ? BestIn(package / "contents/images_dark", screen) : std::nullopt;
    return dark ? dark : BestIn(package / "contents/images", screen);
}

} // namespace

std::optional<std::string> PictureOf(const std::string& setting, Size screen, bool isDark)
{
    const std::string location = PathOf(setting.empty() ? DefaultSetting() : setting);
    std::error_code error;
    fs::path path = location;
    if (path.is_relative()) {
        const std::optional<std::string> found = KdeSettings::DataFile("wallpapers/" + location);
        if (location.empty() || !found)
            return std::nullopt;
        path = *found;
    }
    if (fs::is_directory(path, error))
        return PictureOfPackage(path, screen, isDark);
    return fs::is_regular_file(path, error) ? std::optional(path.string()) : std::nullopt;
}

std::string DefaultColor()
{
    const auto path = KdeSettings::DataFile("plasma/wallpapers/org.kde.color/contents/config/main.xml");
    if (!path)
        return {};
    const std::string settings = ReadSmallFile(*path, bounds::kMostForeignSettings).value_or("");
    // Searched by hand: with a sanitizer, a compiler warns about the standard library's regular expressions.
    const size_t entry = settings.find("name=\"Color\"");
    const size_t value = entry == std::string::npos ? entry : settings.find('#', entry);
    if (value == std::string::npos || value < kStart.size())
        return {};
    const std::string color = settings.substr(value, 7);
    const bool isColor = color.size() == 7 && color.find_first_not_of("0123456789abcdefABCDEF", 1) == color.npos;
    const bool isDefault = settings.compare(value - kStart.size(), kStart.size(), kStart) == 0 &&
                           settings.compare(value + color.size(), kEnd.size(), kEnd) == 0;
    return isColor && isDefault ? color : std::string();
}

int BestOf(const std::vector<std::string>& names, Size screen)
{
    using Rank = std::tuple<bool, double, bool, double>;
    int best = -1;
    Rank bestRank;
    for (size_t i = 0; i < names.size(); i++) {
        Size size;
        const bool isSized = std::sscanf(names[i].c_str(), "%5dx%5d.", &size.width, &size.height) == 2 &&
                             size.width > 0 && size.height > 0;
        double shape = 0;
        double area = 0;
        bool isSmall = false;
        if (isSized) {
            area = static_cast<double>(size.width) * size.height;
            isSmall = size.width < screen.width || size.height < screen.height;
        }
        if (isSized && screen.width > 0 && screen.height > 0) {
            // Shapes that differ only by the rounding of their sides are equal.
            const double exact = std::log(static_cast<double>(size.width) * screen.height / size.height / screen.width);
            shape = std::round(std::abs(exact) * 100);
        }
        const Rank rank(!isSized, shape, isSmall, isSmall ? -area : area);
        if (best < 0 || rank < bestRank) {
            best = static_cast<int>(i);
            bestRank = rank;
        }
    }
    return best;
}

} // namespace kits::PlasmaWallpaper
