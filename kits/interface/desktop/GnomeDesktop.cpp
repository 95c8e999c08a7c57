#include "kits/interface/desktop/GnomeDesktop.h"

#include "kits/interface/desktop/PictureFile.h"

#include <cstdio>
#include <map>
#include <sstream>

namespace kits {

namespace {

constexpr const char* kSchema = "org.gnome.desktop.background";
constexpr const char* kPath = "/org/gnome/desktop/background/";
constexpr const char* kInterface = "org.gnome.desktop.interface";

constexpr const char* kColor = "primary-color";
constexpr const char* kOtherColor = "secondary-color";
constexpr const char* kShading = "color-shading-type";
constexpr const char* kOptions = "picture-options";
constexpr const char* kPicture = "picture-uri";
constexpr const char* kDarkPicture = "picture-uri-dark";
constexpr const char* kScheme = "color-scheme";

constexpr const char* kSolid = "'solid'";
constexpr const char* kNone = "'none'";

/// Where no colour is set.
constexpr rgb_color kBlack = make_color(0, 0, 0);

std::string Trimmed(const std::string& text)
{
    const size_t last = text.find_last_not_of(" \n");
    return last == std::string::npos ? "" : text.substr(0, last + 1);
}

/// Lines of a schema, a key and a value each.
std::map<std::string, std::string> ValuesOf(const std::string& listed)
{
    std::map<std::string, std::string> values;
    std::istringstream lines(listed);
    for (std::string line; std::getline(lines, line);) {
        const size_t key = line.find(' ');
        const size_t value = key == std::string::npos ? key : line.find(' ', key + 1);
        if (value != std::string::npos && line.compare(0, key, kSchema) == 0)
            values[line.substr(key + 1, value - key - 1)] = line.substr(value + 1);
    }
    return values;
}

} // namespace

GnomeDesktop::GnomeDesktop()
    : fMonitor({"gsettings", "monitor", kSchema})
    , fSchemeMonitor({"gsettings", "monitor", kInterface, kScheme})
{
}

std::optional<SettingsDesktop::Settings> GnomeDesktop::Current() const
{
    const std::optional<std::string> listed = Tool::Run({"gsettings", "list-recursively", kSchema});
    if (!listed)
        return std::nullopt;
    const std::map<std::string, std::string> values = ValuesOf(*listed);
    const bool canTell = Tool::Exists("dconf");
    Settings settings;
    for (const auto& [key, kind] : {std::pair(kColor, Kind::kColor),
                                    {kShading, Kind::kStyle},
                                    {kOptions, Kind::kStyle},
                                    {kOtherColor, Kind::kRead},
                                    {kPicture, Kind::kRead},
                                    {kDarkPicture, Kind::kRead}}) {
        const auto value = values.find(key);
        if (value == values.end())
            continue;
        bool isSet = true;
        if (canTell && kind != Kind::kRead) {
            const std::optional<std::string> own = Tool::Run({"dconf", "read", std::string(kPath) + key});
            isSet = !own || !Trimmed(*own).empty();
        }
        settings.push_back({key, kind, value->second, isSet});
    }
    if (const std::optional<std::string> scheme = Tool::Run({"gsettings", "get", kInterface, kScheme}))
        settings.push_back({kScheme, Kind::kRead, Trimmed(*scheme), true});
    return settings;
}

bool GnomeDesktop::Set(const std::string& key, const std::string& value)
{
    return Tool::Run({"gsettings", "set", kSchema, key, value}).has_value();
}

bool GnomeDesktop::Unset(const std::string& key)
{
    return Tool::Run({"gsettings", "reset", kSchema, key}).has_value();
}

std::string GnomeDesktop::PlainStyle(const std::string& key) const
{
    return key == kShading ? kSolid : kNone;
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
        const std::string* value = Find(settings, key);
        return value != nullptr ? *value : std::string();
    };
    const std::optional<rgb_color> color = ParseColor(text(kColor));
    const std::optional<rgb_color> other = ParseColor(text(kOtherColor));
    const std::optional<rgb_color> plain = color && other && text(kShading) != kSolid ? Between(*color, *other) : color;
    if (text(kOptions) != kNone) {
        const bool isDark = text(kScheme) == "'prefer-dark'" && !Unquoted(text(kDarkPicture)).empty();
        if (const auto average =
                AverageOfFile(Unquoted(text(isDark ? kDarkPicture : kPicture)), plain.value_or(kBlack)))
            return average;
    }
    return plain;
}

std::vector<int> GnomeDesktop::Descriptors() const
{
    std::vector<int> descriptors;
    for (const Tool* tool : {&fMonitor, &fSchemeMonitor}) {
        if (tool->Descriptor() >= 0)
            descriptors.push_back(tool->Descriptor());
    }
    return descriptors;
}

std::vector<std::string> GnomeDesktop::TakeChanges()
{
    std::vector<std::string> changes = fMonitor.TakeLines();
    for (std::string& line : fSchemeMonitor.TakeLines())
        changes.push_back(std::move(line));
    return changes;
}

bool GnomeDesktop::MayBeStyle(const std::string& change) const
{
    return change.rfind(kShading, 0) == 0 || change.rfind(kOptions, 0) == 0;
}

} // namespace kits
