// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopEnvironments.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"
#include "kits/interface/platform/desktops/X11Desktop.h"

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

class XfceDesktop : public SettingsDesktop {
public:
    explicit XfceDesktop(const std::string& screen)
        : SettingsDesktop({{kTool, "-c", kChannel, "-m"}})
        , fScreen(screen)
    {
    }

    const char* Name() const override { return "xfce"; }

protected:
    std::optional<Settings> Current() const override
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

    bool Set(const std::string& key, const std::string& value) override
    {
        std::vector<std::string> arguments = {kTool, "-c", kChannel, "-p", key, "-n"};
        const bool isColor = key.ends_with(kColor);
        std::istringstream items(value);
        for (std::string item; items >> item;)
            arguments.insert(arguments.end(), {"-t", isColor ? "double" : "int", "-s", item});
        if (isColor)
            arguments.emplace_back("-a");
        return Tool::Run(arguments).has_value();
    }

    bool Unset(const std::string& key) override
    {
        return Tool::Run({kTool, "-c", kChannel, "-p", key, "-r"}).has_value();
    }

    std::string PlainStyle(const std::string&) const override { return kPlain; }

    std::string FormatColor(rgb_color color) const override
    {
        char text[64];
        std::snprintf(text, sizeof(text), "%.6f %.6f %.6f 1.000000", color.red / 255.0, color.green / 255.0,
                      color.blue / 255.0);
        return text;
    }

    std::optional<rgb_color> ParseColor(const std::string& value) const override
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

    /// Returns the colour of the main monitor and the visible workspace.
    std::optional<rgb_color> Shown(const Settings& settings) const override
    {
        if (settings.empty())
            return std::nullopt;
        const std::string workspace = ShownWorkspace(settings);
        const auto text = [&](const char* leaf) { return Find(settings, workspace + leaf).value_or(""); };
        const bool isGradient = text(kColorStyle) == "1" || text(kColorStyle) == "2";
        return Average(text(kImageStyle) != kPlain ? text(kImage) : "", ParseColor(text(kColor)),
                       isGradient ? ParseColor(text(kOtherColor)) : std::nullopt);
    }

    bool IsNews(const std::string& line, bool isPainted) const override
    {
        const bool isStyle = line.ends_with(kColorStyle) || line.ends_with(kImageStyle);
        return line.find(kBackdrop) != line.npos && (!isPainted || isStyle);
    }

private:
    std::string ShownWorkspace(const Settings& settings) const
    {
        const bool isSingle = Find(settings, kSingleMode).value_or("true") == "true";
        const std::string number =
            isSingle ? Find(settings, kSingleNumber).value_or("0") : std::to_string(X11Desktop::CurrentWorkspace());
        const std::string monitor = "/monitor" + fScreen + "/";
        std::string best = WorkspaceOf(settings.front().key);
        int bestRank = -1;
        for (const Setting& setting : settings) {
            const std::string workspace = WorkspaceOf(setting.key);
            if (workspace.empty())
                continue;
            // Former monitors have settings too.
            const int rank = (workspace.find(monitor) != workspace.npos ? 2 : 0) +
                             (workspace.ends_with(kWorkspace + number) ? 1 : 0);
            if (rank > bestRank) {
                best = workspace;
                bestRank = rank;
            }
        }
        return best;
    }

    const std::string fScreen;
};

} // namespace

std::unique_ptr<DesktopBackend> MakeXfceDesktop(const std::string& screen)
{
    return std::make_unique<XfceDesktop>(screen);
}

} // namespace kits
