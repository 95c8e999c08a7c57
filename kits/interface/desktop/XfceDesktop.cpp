#include "kits/interface/desktop/XfceDesktop.h"

#include "kits/interface/desktop/PictureFile.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <sstream>

namespace kits {

namespace {

constexpr const char* kTool = "xfconf-query";
constexpr const char* kChannel = "xfce4-desktop";
constexpr const char* kBackdrop = "/backdrop/";
constexpr const char* kWorkspace = "/workspace";

constexpr const char* kColor = "/rgba1";
constexpr const char* kOtherColor = "/rgba2";
constexpr const char* kColorStyle = "/color-style";
constexpr const char* kImageStyle = "/image-style";
constexpr const char* kImage = "/last-image";

/// One colour, no picture.
constexpr const char* kPlain = "0";

/// Where no colour is set.
constexpr rgb_color kBlack = make_color(0, 0, 0);

bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The part of a setting's name that is the workspace's; "" when it belongs to none.
std::string WorkspaceOf(const std::string& key)
{
    const size_t workspace = key.rfind(kBackdrop, 0) == 0 ? key.find(kWorkspace) : std::string::npos;
    const size_t end = workspace == std::string::npos ? workspace : key.find('/', workspace + 1);
    return end == std::string::npos ? "" : key.substr(0, end);
}

/// As it is printed: one line, or a heading and a line for each item.
std::string ValueOf(const std::string& printed, bool isColor)
{
    std::istringstream lines(printed);
    std::string value;
    for (std::string line; std::getline(lines, line);) {
        const bool isHeading = line.empty() || (isColor && line.find_first_not_of("0123456789.eE+-") != line.npos);
        if (!isHeading)
            value += (value.empty() ? "" : " ") + line;
    }
    return value;
}

} // namespace

XfceDesktop::XfceDesktop()
    : fMonitor({kTool, "-c", kChannel, "-m"})
{
}

std::optional<SettingsDesktop::Settings> XfceDesktop::Current() const
{
    const std::optional<std::string> listed = Tool::Run({kTool, "-c", kChannel, "-l"});
    if (!listed)
        return std::nullopt;
    std::set<std::string> keys;
    std::set<std::string> workspaces;
    std::istringstream lines(*listed);
    for (std::string line; std::getline(lines, line);) {
        keys.insert(line);
        if (const std::string workspace = WorkspaceOf(line); !workspace.empty())
            workspaces.insert(workspace);
    }
    Settings settings;
    for (const auto& [leaf, kind] : {std::pair(kColor, Kind::kColor),
                                     {kColorStyle, Kind::kStyle},
                                     {kImageStyle, Kind::kStyle},
                                     {kOtherColor, Kind::kRead},
                                     {kImage, Kind::kRead}}) {
        for (const std::string& workspace : workspaces) {
            const std::string key = workspace + leaf;
            std::optional<std::string> value;
            if (keys.count(key) != 0) {
                const std::optional<std::string> printed = Tool::Run({kTool, "-c", kChannel, "-p", key});
                if (!printed)
                    return std::nullopt;
                value = ValueOf(*printed, leaf == kColor || leaf == kOtherColor);
            }
            settings.push_back({key, kind, value, value.has_value()});
        }
    }
    return settings;
}

bool XfceDesktop::Set(const std::string& key, const std::string& value)
{
    std::vector<std::string> arguments = {kTool, "-c", kChannel, "-p", key, "-n"};
    const bool isColor = EndsWith(key, kColor);
    std::istringstream items(value);
    for (std::string item; items >> item;)
        arguments.insert(arguments.end(), {"-t", isColor ? "double" : "int", "-s", item});
    if (isColor)
        arguments.emplace_back("-a");
    return Tool::Run(arguments).has_value();
}

bool XfceDesktop::Unset(const std::string& key)
{
    return Tool::Run({kTool, "-c", kChannel, "-p", key, "-r"}).has_value();
}

std::string XfceDesktop::PlainStyle(const std::string&) const
{
    return kPlain;
}

std::string XfceDesktop::FormatColor(rgb_color color) const
{
    char text[64];
    std::snprintf(text, sizeof(text), "%.6f %.6f %.6f 1.000000", color.red / 255.0, color.green / 255.0,
                  color.blue / 255.0);
    return text;
}

std::optional<rgb_color> XfceDesktop::ParseColor(const std::string& value) const
{
    std::istringstream text(value);
    double parts[3];
    for (double& part : parts) {
        if (!(text >> part) || !(part >= 0 && part <= 1))
            return std::nullopt;
        part = part * 255 + 0.5;
    }
    return make_color(static_cast<uint8>(parts[0]), static_cast<uint8>(parts[1]), static_cast<uint8>(parts[2]));
}

/// That of the first monitor and workspace.
std::optional<rgb_color> XfceDesktop::Shown(const Settings& settings) const
{
    if (settings.empty())
        return std::nullopt;
    const std::string workspace = WorkspaceOf(settings.front().key);
    const auto text = [&](const char* leaf) {
        const std::string* value = Find(settings, workspace + leaf);
        return value != nullptr ? *value : std::string();
    };
    const std::optional<rgb_color> color = ParseColor(text(kColor));
    const std::optional<rgb_color> other = ParseColor(text(kOtherColor));
    const bool isGradient = text(kColorStyle) == "1" || text(kColorStyle) == "2";
    const std::optional<rgb_color> plain = color && other && isGradient ? Between(*color, *other) : color;
    if (text(kImageStyle) != kPlain) {
        if (const auto average = AverageOfFile(text(kImage), plain.value_or(kBlack)))
            return average;
    }
    return plain;
}

std::vector<int> XfceDesktop::Descriptors() const
{
    return fMonitor.Descriptor() >= 0 ? std::vector{fMonitor.Descriptor()} : std::vector<int>();
}

std::vector<std::string> XfceDesktop::TakeChanges()
{
    std::vector<std::string> changes = fMonitor.TakeLines();
    changes.erase(std::remove_if(changes.begin(), changes.end(),
                                 [](const std::string& line) { return line.find(kBackdrop) == line.npos; }),
                  changes.end());
    return changes;
}

bool XfceDesktop::MayBeStyle(const std::string& change) const
{
    return EndsWith(change, kColorStyle) || EndsWith(change, kImageStyle);
}

} // namespace kits
