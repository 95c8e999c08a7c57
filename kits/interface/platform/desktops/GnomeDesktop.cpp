// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/GnomeDesktop.h"

#include "kits/interface/platform/desktops/PictureFile.h"

#include <cstdio>
#include <map>
#include <sstream>

namespace kits {

namespace {

constexpr const char* kInterface = "org.gnome.desktop.interface";

constexpr const char* kColor = "primary-color";
constexpr const char* kOtherColor = "secondary-color";
constexpr const char* kShading = "color-shading-type";
constexpr const char* kScheme = "color-scheme";

constexpr const char* kSolid = "'solid'";

/// The default where no colour is set.
constexpr rgb_color kBlack = make_color(0, 0, 0);

std::string Trimmed(const std::string& text)
{
    const size_t last = text.find_last_not_of(" \n");
    return last == std::string::npos ? "" : text.substr(0, last + 1);
}

/// Parses lines of a schema, a key and a value each.
std::map<std::string, std::string> ValuesOf(const std::string& listed, const std::string& schema)
{
    std::map<std::string, std::string> values;
    std::istringstream lines(listed);
    for (std::string line; std::getline(lines, line);) {
        const size_t key = line.find(' ');
        const size_t value = key == std::string::npos ? key : line.find(' ', key + 1);
        if (value != std::string::npos && line.compare(0, key, schema) == 0)
            values[line.substr(key + 1, value - key - 1)] = line.substr(value + 1);
    }
    return values;
}

} // namespace

const GnomeDesktop::Family GnomeDesktop::kGnome{"gnome",
                                                "org.gnome.desktop.background",
                                                "/org/gnome/desktop/background/",
                                                "picture-uri",
                                                "picture-uri-dark",
                                                "picture-options",
                                                "'none'"};
const GnomeDesktop::Family GnomeDesktop::kCinnamon{"cinnamon",
                                                   "org.cinnamon.desktop.background",
                                                   "/org/cinnamon/desktop/background/",
                                                   "picture-uri",
                                                   nullptr,
                                                   "picture-options",
                                                   "'none'"};
// Its options have none without a picture, so the name of the picture is emptied.
const GnomeDesktop::Family GnomeDesktop::kMate{
    "mate", "org.mate.background", "/org/mate/desktop/background/", "picture-filename", nullptr, "picture-filename",
    "''"};

GnomeDesktop::GnomeDesktop(const Family& family)
    : fFamily(family)
    , fMonitor({"gsettings", "monitor", family.schema})
{
    if (fFamily.darkPicture != nullptr)
        fSchemeMonitor.emplace(std::vector<std::string>{"gsettings", "monitor", kInterface, kScheme});
}

std::optional<SettingsDesktop::Settings> GnomeDesktop::Current() const
{
    using Part = SettingsDesktop::Kind;
    const std::optional<std::string> listed = Tool::Run({"gsettings", "list-recursively", fFamily.schema});
    if (!listed)
        return std::nullopt;
    const std::map<std::string, std::string> values = ValuesOf(*listed, fFamily.schema);
    const bool canTell = Tool::Exists("dconf");
    std::vector<std::pair<std::string, Part>> parts = {{kColor, Part::kColor},
                                                       {kShading, Part::kStyle},
                                                       {fFamily.pictureStyle, Part::kStyle},
                                                       {kOtherColor, Part::kRead}};
    for (const char* picture : {fFamily.picture, fFamily.darkPicture})
        if (picture != nullptr && picture != std::string(fFamily.pictureStyle))
            parts.emplace_back(picture, Part::kRead);
    Settings settings;
    for (const auto& [key, part] : parts) {
        const auto value = values.find(key);
        if (value == values.end())
            continue;
        bool isSet = true;
        if (canTell && part != Part::kRead) {
            const std::optional<std::string> own = Tool::Run({"dconf", "read", fFamily.path + key});
            isSet = !own || !Trimmed(*own).empty();
        }
        settings.push_back({key, part, value->second, isSet});
    }
    if (fFamily.darkPicture == nullptr)
        return settings;
    if (const std::optional<std::string> scheme = Tool::Run({"gsettings", "get", kInterface, kScheme}))
        settings.push_back({kScheme, Part::kRead, Trimmed(*scheme), true});
    return settings;
}

bool GnomeDesktop::Set(const std::string& key, const std::string& value)
{
    return Tool::Run({"gsettings", "set", fFamily.schema, key, value}).has_value();
}

bool GnomeDesktop::Unset(const std::string& key)
{
    return Tool::Run({"gsettings", "reset", fFamily.schema, key}).has_value();
}

std::string GnomeDesktop::PlainStyle(const std::string& key) const
{
    return key == kShading ? kSolid : fFamily.noPicture;
}

std::string GnomeDesktop::FormatColor(rgb_color color) const
{
    char text[16];
    std::snprintf(text, sizeof(text), "'#%02x%02x%02x'", color.red, color.green, color.blue);
    return text;
}

std::optional<rgb_color> GnomeDesktop::ParseColor(const std::string& value) const
{
    return ParseHexColor(Unquoted(value));
}

std::optional<rgb_color> GnomeDesktop::Shown(const Settings& settings) const
{
    const auto text = [&](const char* key) {
        const std::string* value = key != nullptr ? Find(settings, key) : nullptr;
        return value != nullptr ? *value : std::string();
    };
    const std::optional<rgb_color> color = ParseColor(text(kColor));
    const std::optional<rgb_color> other = ParseColor(text(kOtherColor));
    const std::optional<rgb_color> plain = color && other && text(kShading) != kSolid ? Between(*color, *other) : color;
    if (text(fFamily.pictureStyle) != fFamily.noPicture) {
        const bool isDark = text(kScheme) == "'prefer-dark'" && !Unquoted(text(fFamily.darkPicture)).empty();
        if (const auto average =
                AverageOfFile(Unquoted(text(isDark ? fFamily.darkPicture : fFamily.picture)), plain.value_or(kBlack)))
            return average;
    }
    return plain;
}

std::vector<int> GnomeDesktop::Descriptors() const
{
    std::vector<int> descriptors;
    for (const Tool* tool : {&fMonitor, fSchemeMonitor ? &*fSchemeMonitor : nullptr})
        if (tool != nullptr && tool->Descriptor() >= 0)
            descriptors.push_back(tool->Descriptor());
    return descriptors;
}

std::vector<std::string> GnomeDesktop::TakeChanges()
{
    std::vector<std::string> changes = fMonitor.TakeLines();
    if (fSchemeMonitor)
        for (std::string& line : fSchemeMonitor->TakeLines())
            changes.push_back(std::move(line));
    return changes;
}

bool GnomeDesktop::MayBeStyle(const std::string& change) const
{
    return change.rfind(kShading, 0) == 0 || change.rfind(fFamily.pictureStyle, 0) == 0;
}

} // namespace kits
