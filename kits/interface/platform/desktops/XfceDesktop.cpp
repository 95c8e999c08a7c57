// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/XfceDesktop.h"

#include "kits/interface/platform/desktops/PictureFile.h"
#include "kits/interface/platform/desktops/X11Desktop.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <sstream>

namespace kits {

namespace {

constexpr const char* kTool = "xfconf-query";
constexpr const char* kChannel = "xfce4-desktop";
constexpr const char* kBackdrop = "/backdrop/";
constexpr const char* kWorkspace = "/workspace";

/// All workspaces show the background of one workspace; otherwise each has its own.
constexpr const char* kSingleMode = "/backdrop/single-workspace-mode";
constexpr const char* kSingleNumber = "/backdrop/single-workspace-number";

constexpr const char* kColor = "/rgba1";
constexpr const char* kOtherColor = "/rgba2";
constexpr const char* kColorStyle = "/color-style";
constexpr const char* kImageStyle = "/image-style";
constexpr const char* kImage = "/last-image";

/// One colour, no picture.
constexpr const char* kPlain = "0";

/// The default where no colour is set.
constexpr rgb_color kBlack = make_color(0, 0, 0);

bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// Returns the workspace's part of a setting's name; "" if the setting belongs to none.
std::string WorkspaceOf(const std::string& key)
{
    const size_t workspace = key.rfind(kBackdrop, 0) == 0 ? key.find(kWorkspace) : std::string::npos;
    const size_t end = workspace == std::string::npos ? workspace : key.find('/', workspace + 1);
    return end == std::string::npos ? "" : key.substr(0, end);
}

/// Parses a printed list: a heading, and a line for each item.
std::string ItemsOf(const std::string& printed)
{
    std::istringstream lines(printed);
    std::string value;
    for (std::string line; std::getline(lines, line);) {
        const bool isHeading = line.empty() || line.find_first_not_of("0123456789.eE+-") != line.npos;
        if (!isHeading)
            value += (value.empty() ? "" : " ") + line;
    }
    return value;
}

} // namespace

XfceDesktop::XfceDesktop(std::string screen)
    : fScreen(std::move(screen))
    , fMonitor({kTool, "-c", kChannel, "-m"})
{
}

std::optional<SettingsDesktop::Settings> XfceDesktop::Current() const
{
    const std::optional<std::string> listed = Tool::Run({kTool, "-c", kChannel, "-l", "-v"});
    if (!listed)
        return std::nullopt;
    std::map<std::string, std::string> values;
    std::set<std::string> workspaces;
    std::istringstream lines(*listed);
    for (std::string line; std::getline(lines, line);) {
        const std::string key = line.substr(0, line.find(' '));
        const size_t value = line.find_first_not_of(' ', key.size());
        values[key] = value != std::string::npos ? line.substr(value) : "";
        if (const std::string workspace = WorkspaceOf(key); !workspace.empty())
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
            const auto found = values.find(key);
            std::optional<std::string> value;
            if (found != values.end())
                value = found->second;
            // A list's items are on lines of their own, which only a query for that list shows.
            if (value && (leaf == kColor || leaf == kOtherColor)) {
                const std::optional<std::string> printed = Tool::Run({kTool, "-c", kChannel, "-p", key});
                if (!printed)
                    return std::nullopt;
                value = ItemsOf(*printed);
            }
            settings.push_back({key, kind, value, value.has_value()});
        }
    }
    for (const char* key : {kSingleMode, kSingleNumber})
        if (values.count(key) != 0)
            settings.push_back({key, Kind::kRead, values[key], true});
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

std::string XfceDesktop::ShownWorkspace(const Settings& settings) const
{
    const std::string* mode = Find(settings, kSingleMode);
    const std::string* single = Find(settings, kSingleNumber);
    const bool isSingle = mode == nullptr || *mode == "true";
    const std::string number = !isSingle           ? std::to_string(X11Desktop::CurrentWorkspace())
                               : single != nullptr ? *single
                                                   : "0";
    const std::string monitor = "/monitor" + fScreen + "/";
    std::string best = WorkspaceOf(settings.front().key);
    int bestRank = -1;
    for (const Setting& setting : settings) {
        const std::string workspace = WorkspaceOf(setting.key);
        if (workspace.empty())
            continue;
        // Former monitors have settings too.
        const int rank =
            (workspace.find(monitor) != workspace.npos ? 2 : 0) + (EndsWith(workspace, kWorkspace + number) ? 1 : 0);
        if (rank > bestRank) {
            best = workspace;
            bestRank = rank;
        }
    }
    return best;
}

/// Returns the colour of the main monitor and the visible workspace.
std::optional<rgb_color> XfceDesktop::Shown(const Settings& settings) const
{
    if (settings.empty())
        return std::nullopt;
    const std::string workspace = ShownWorkspace(settings);
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
