// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DarkSigns.h"
#include "kits/interface/platform/desktops/IniFile.h"
#include "kits/interface/platform/desktops/KdeSettings.h"
#include "kits/interface/platform/desktops/PlasmaWallpaper.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"
#include "kits/interface/platform/desktops/Slideshow.h"
#include "kits/interface/platform/x11/XSettings.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

// Files of desktops and properties of the X server: colours, themes, names of pictures.

namespace {

void CheckIni(const std::string& text)
{
    const kits::IniFile file(text);
    size_t bytes = 0, entries = 0;
    for (const auto& [group, values] : file.Groups()) {
        Expect(group.find('\n') == group.npos);
        for (const auto& [key, value] : values) {
            entries++;
            bytes += key.size() + value.size();
            Expect(key.find_first_of("=\n") == key.npos);
            Expect(file.Value(group, key) == value);
        }
        Expect(!file.Value(group + "]", "no such key").has_value());
    }
    Expect(bytes <= text.size());
    Expect(entries <= static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
    // A further setting at the end leaves all others unchanged.
    const kits::IniFile more(text + "\n[a group of ours]\nkey= plain\\n\\s \n");
    Expect(more.Value("a group of ours", "key") == "plain\n ");
    for (const auto& [group, values] : file.Groups())
        if (group != "a group of ours")
            Expect(more.Groups().at(group) == values);
    kits::SettingsAreDark(text);
}

void CheckColors(const std::string& text)
{
    const std::optional<rgb_color> color = kits::ParseHexColor(text);
    if (color && text.front() == '#') {
        Expect(std::all_of(text.begin() + 1, text.end(), [](unsigned char c) { return std::isxdigit(c) != 0; }));
        char again[8];
        std::snprintf(again, sizeof(again), "#%02x%02x%02x", color->red, color->green, color->blue);
        const std::optional<rgb_color> second = kits::ParseHexColor(again);
        Expect(second && *second == *color);
        if (text.size() == 7)
            Expect(std::equal(text.begin(), text.end(), again,
                              [](unsigned char a, unsigned char b) { return std::tolower(a) == b; }));
    }
    if (const std::optional<bool> isDark = kits::KdeSettings::IsDarkColor(text)) {
        // Three numbers of up to three digits.
        std::istringstream numbers(text);
        int part = -1;
        char comma = ',';
        for (int i = 0; i < 3; i++)
            Expect((i == 0 || (numbers >> comma && comma == ',')) && numbers >> part && part >= 0 && part <= 255);
    }
    const std::string unquoted = kits::Unquoted(text);
    Expect(unquoted.size() <= text.size());
    Expect(kits::Unquoted("'" + std::string(1, 'x') + "'") == "x");
    Expect(kits::UnescapedByQt(text).size() <= text.size());
    kits::ThemeNameIsDark(text);
}

void CheckNames(const std::string& text)
{
    std::vector<std::string> names;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        names.push_back(line);
    for (const kits::PlasmaWallpaper::Size screen : {kits::PlasmaWallpaper::Size{}, {1920, 1080}, {1, 99999}}) {
        const int best = kits::PlasmaWallpaper::BestOf(names, screen);
        Expect(names.empty() ? best == -1 : best >= 0 && static_cast<size_t>(best) < names.size());
        // It is also the best of any subset that contains it.
        if (best >= 0)
            Expect(kits::PlasmaWallpaper::BestOf({names[static_cast<size_t>(best)]}, screen) == 0);
    }
}

void CheckXSettings(std::string_view bytes)
{
    const auto* data = reinterpret_cast<const uint8*>(bytes.data());
    const kits::XSettings settings({data, bytes.size()});
    for (const char* name : {"Net/ThemeName", "Xft/DPI", "Gdk/WindowScalingFactor", ""}) {
        const std::optional<std::string> text = settings.Text(name);
        Expect(!text || text->size() <= bytes.size());
        settings.Integer(name);
    }
}

void CheckSlides(const std::string& text)
{
    for (const int64 when : {int64{0}, int64{1'700'000'000}, INT64_MAX, INT64_MIN}) {
        const std::string picture = kits::SlideAt(text, when);
        Expect(picture.empty() || picture.front() == '/');
    }
}

} // namespace

// The first byte says what the rest is.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const std::string_view rest = TextOf(data + 1, size - 1);
    switch (data[0] % 5) {
    case 0:
        CheckIni(std::string(rest));
        break;
    case 1:
        CheckColors(std::string(rest));
        break;
    case 2:
        CheckNames(std::string(rest));
        break;
    case 3:
        CheckXSettings(rest);
        break;
    default:
        CheckSlides(std::string(rest));
    }
    return 0;
}
