// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/SettingsDesktop.h"

#include "kits/interface/platform/desktops/PictureFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <set>

namespace kits {

namespace {

constexpr const char* kKey = "Key";
constexpr const char* kKind = "Kind";
constexpr const char* kValue = "Value";
constexpr const char* kIsSet = "IsSet";

/// The default where no colour is set.
constexpr rgb_color kBlack = make_color(0, 0, 0);

/// Returns the colour halfway between two.
rgb_color Between(rgb_color first, rgb_color second)
{
    const auto half = [](uint8 a, uint8 b) { return static_cast<uint8>((a + b + 1) / 2); };
    return make_color(half(first.red, second.red), half(first.green, second.green), half(first.blue, second.blue));
}

} // namespace

SettingsDesktop::SettingsDesktop(const std::vector<std::vector<std::string>>& monitors)
{
    for (const std::vector<std::string>& arguments : monitors)
        fMonitors.emplace_back(arguments);
}

std::optional<rgb_color> SettingsDesktop::Read()
{
    const std::optional<Settings> settings = Current();
    return settings ? Shown(*settings) : std::nullopt;
}

std::optional<BMessage> SettingsDesktop::Keep()
{
    const std::optional<Settings> settings = Current();
    if (!settings)
        return std::nullopt;
    BMessage kept;
    for (const Setting& setting : *settings) {
        if (setting.kind == Kind::kRead)
            continue;
        kept.AddString(kKey, setting.key);
        kept.AddBool(kKind, setting.kind == Kind::kColor);
        kept.AddBool(kIsSet, setting.isSet);
        kept.AddString(kValue, setting.value.value_or(""));
    }
    // Without any setting there is no background to paint.
    return kept.IsEmpty() ? std::nullopt : std::optional(kept);
}

bool SettingsDesktop::Paint(rgb_color color, const BMessage& kept)
{
    const bool isFirst = !fPainted;
    fPainted = color;
    std::string key;
    bool isColor = false;
    for (int32 i = 0; kept.FindString(kKey, &key, i) == B_OK && kept.FindBool(kKind, &isColor, i) == B_OK; i++)
        if ((isColor || isFirst) && !Set(key, isColor ? FormatColor(color) : PlainStyle(key)))
            return false;
    return true;
}

bool SettingsDesktop::IsOurs(const Setting& setting) const
{
    if (!setting.value || setting.kind == Kind::kRead)
        return false;
    if (setting.kind == Kind::kStyle)
        return *setting.value == PlainStyle(setting.key);
    // The colour that another process has painted is unknown, so any colour may be it.
    return !fPainted || ParseColor(*setting.value) == fPainted;
}

bool SettingsDesktop::Restore(const BMessage& kept)
{
    const std::optional<Settings> settings = Current();
    if (!settings)
        return false;
    int32 count = 0;
    kept.GetInfo(kKey, nullptr, &count);
    // Each setting is restored once: it may take seconds, and a damaged file may name it thousands of times.
    std::set<std::string> done;
    // Styles first, so that the picture comes back at once.
    for (int32 i = count - 1; i >= 0; i--) {
        std::string key;
        std::string value;
        bool isSet = false;
        if (kept.FindString(kKey, &key, i) != B_OK || kept.FindBool(kIsSet, &isSet, i) != B_OK ||
            kept.FindString(kValue, &value, i) != B_OK)
            continue;
        const auto now = std::find_if(settings->begin(), settings->end(),
                                      [&](const Setting& setting) { return setting.key == key; });
        if (now == settings->end() || !IsOurs(*now) || !done.insert(key).second)
            continue;
        if (!(isSet ? Set(key, value) : Unset(key)))
            return false;
    }
    fPainted.reset();
    return true;
}

bool SettingsDesktop::Change(rgb_color color, const BMessage*)
{
    fPainted.reset();
    const std::optional<Settings> settings = Current();
    if (!settings)
        return false;
    bool isDone = false;
    for (const Setting& setting : *settings) {
        if (setting.kind == Kind::kRead)
            continue;
        const bool isColor = setting.kind == Kind::kColor;
        if (!Set(setting.key, isColor ? FormatColor(color) : PlainStyle(setting.key)))
            return false;
        isDone = true;
    }
    return isDone;
}

bool SettingsDesktop::IsPainted() const
{
    const std::optional<Settings> settings = Current();
    return fPainted && settings && std::all_of(settings->begin(), settings->end(), [this](const Setting& setting) {
               return setting.kind != Kind::kStyle || setting.value == PlainStyle(setting.key);
           });
}

std::vector<int> SettingsDesktop::Descriptors() const
{
    std::vector<int> descriptors;
    for (const Tool& monitor : fMonitors)
        if (monitor.Descriptor() >= 0)
            descriptors.push_back(monitor.Descriptor());
    return descriptors;
}

bool SettingsDesktop::TakeNews()
{
    bool isNews = false;
    for (Tool& monitor : fMonitors)
        for (const std::string& line : monitor.TakeLines())
            isNews = isNews || IsNews(line, fPainted.has_value());
    return isNews;
}

std::optional<std::string> SettingsDesktop::Find(const Settings& settings, const std::string& key)
{
    for (const Setting& setting : settings)
        if (setting.key == key && setting.value)
            return setting.value;
    return std::nullopt;
}

std::optional<rgb_color> SettingsDesktop::Average(const std::string& picture, std::optional<rgb_color> color,
                                                  std::optional<rgb_color> other)
{
    const std::optional<rgb_color> plain = color && other ? Between(*color, *other) : color;
    const std::optional<rgb_color> average = AverageOfFile(picture, plain.value_or(kBlack));
    return average ? average : plain;
}

std::string Unquoted(const std::string& value)
{
    if (value.size() < 2 || (value.front() != '\'' && value.front() != '"') || value.back() != value.front())
        return value;
    std::string text;
    for (size_t i = 1; i + 1 < value.size(); i++) {
        if (value[i] == '\\' && i + 2 < value.size())
            i++;
        text += value[i];
    }
    return text;
}

std::optional<rgb_color> ParseHexColor(const std::string& text)
{
    if ((text.size() == 7 || text.size() == 13) && text.front() == '#') {
        const size_t digits = text.size() / 3;
        std::array<unsigned, 3> parts{};
        for (size_t i = 0; i < parts.size(); i++) {
            const char* const end = text.data() + 1 + (i + 1) * digits;
            if (std::from_chars(end - digits, end, parts[i], 16).ptr != end)
                return std::nullopt;
            parts[i] >>= (digits - 2) * 4;
        }
        return make_color(static_cast<uint8>(parts[0]), static_cast<uint8>(parts[1]), static_cast<uint8>(parts[2]));
    }
    const std::string start = "rgb(";
    size_t end = 0;
    if (!text.starts_with(start))
        return std::nullopt;
    const std::string rest = text.substr(start.size());
    const std::optional<rgb_color> color = ParseDecimalColor(rest, &end);
    return rest.substr(end) == ")" ? color : std::nullopt;
}

std::optional<rgb_color> ParseDecimalColor(const std::string& text, size_t* end)
{
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    int used = 0;
    if (std::sscanf(text.c_str(), "%3u,%3u,%3u%n", &red, &green, &blue, &used) != 3 ||
        std::max({red, green, blue}) > 255)
        return std::nullopt;
    *end = static_cast<size_t>(used);
    return make_color(static_cast<uint8>(red), static_cast<uint8>(green), static_cast<uint8>(blue));
}

bool IsDarkColor(rgb_color color)
{
    return (color.red * 11 + color.green * 16 + color.blue * 5) / 32 < 128;
}

} // namespace kits
