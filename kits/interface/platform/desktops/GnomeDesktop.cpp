// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopEnvironments.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"

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

class GnomeDesktop : public SettingsDesktop {
public:
    explicit GnomeDesktop(const GnomeFamily& family)
        : SettingsDesktop(Monitors(family))
        , fFamily(family)
    {
    }

    const char* Name() const override { return fFamily.name; }

protected:
    std::optional<Settings> Current() const override
    {
        const std::optional<std::string> listed = Tool::Run({"gsettings", "list-recursively", fFamily.schema});
        if (!listed)
            return std::nullopt;
        const std::map<std::string, std::string> values = ValuesOf(*listed, fFamily.schema);
        const bool canTell = Tool::Exists("dconf");
        // If the picture is its own style, the first of the two counts.
        const std::pair<std::string, Kind> parts[] = {
            {kColor, Kind::kColor},     {kShading, Kind::kStyle},       {fFamily.pictureStyle, Kind::kStyle},
            {kOtherColor, Kind::kRead}, {fFamily.picture, Kind::kRead}, {fFamily.darkPicture, Kind::kRead}};
        Settings settings;
        for (const auto& [key, part] : parts) {
            const auto value = values.find(key);
            if (value == values.end())
                continue;
            bool isSet = true;
            if (canTell && part != Kind::kRead) {
                const std::optional<std::string> own = Tool::Run({"dconf", "read", fFamily.path + key});
                isSet = !own || !Trimmed(*own).empty();
            }
            settings.push_back({key, part, value->second, isSet});
        }
        if (!fFamily.HasDarkPicture())
            return settings;
        if (const std::optional<std::string> scheme = Tool::Run({"gsettings", "get", kInterface, kScheme}))
            settings.push_back({kScheme, Kind::kRead, Trimmed(*scheme), true});
        return settings;
    }

    bool Set(const std::string& key, const std::string& value) override
    {
        return Tool::Run({"gsettings", "set", fFamily.schema, key, value}).has_value();
    }

    bool Unset(const std::string& key) override
    {
        return Tool::Run({"gsettings", "reset", fFamily.schema, key}).has_value();
    }

    std::string PlainStyle(const std::string& key) const override
    {
        return key == kShading ? kSolid : fFamily.noPicture;
    }

    std::string FormatColor(rgb_color color) const override
    {
        char text[16];
        std::snprintf(text, sizeof(text), "'#%02x%02x%02x'", color.red, color.green, color.blue);
        return text;
    }

    std::optional<rgb_color> ParseColor(const std::string& value) const override
    {
        return ParseHexColor(Unquoted(value));
    }

    std::optional<rgb_color> Shown(const Settings& settings) const override
    {
        const auto text = [&](const char* key) { return Find(settings, key).value_or(""); };
        const bool isGradient = text(kShading) != kSolid;
        std::string picture;
        if (text(fFamily.pictureStyle) != fFamily.noPicture) {
            const std::string dark = Unquoted(text(fFamily.darkPicture));
            const bool isDark = text(kScheme) == "'prefer-dark'" && !dark.empty();
            picture = isDark ? dark : Unquoted(text(fFamily.picture));
        }
        return Average(picture, ParseColor(text(kColor)), isGradient ? ParseColor(text(kOtherColor)) : std::nullopt);
    }

    bool IsNews(const std::string& line, bool isPainted) const override
    {
        return !isPainted || line.starts_with(kShading) || line.starts_with(fFamily.pictureStyle);
    }

private:
    static std::vector<std::vector<std::string>> Monitors(const GnomeFamily& family)
    {
        std::vector<std::vector<std::string>> monitors = {{"gsettings", "monitor", family.schema}};
        if (family.HasDarkPicture())
            monitors.push_back({"gsettings", "monitor", kInterface, kScheme});
        return monitors;
    }

    const GnomeFamily& fFamily;
};

} // namespace

std::unique_ptr<DesktopBackend> MakeGnomeDesktop(const GnomeFamily& family)
{
    return std::make_unique<GnomeDesktop>(family);
}

} // namespace kits
