// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopEnvironments.h"
#include "kits/interface/platform/desktops/Environment.h"
#include "kits/interface/platform/desktops/FileWatch.h"
#include "kits/interface/platform/desktops/IniFile.h"
#include "kits/interface/platform/desktops/KdeSettings.h"
#include "kits/interface/platform/desktops/PictureFile.h"
#include "kits/interface/platform/desktops/PlasmaWallpaper.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"

#include <cstdio>
#include <sstream>

namespace kits {

namespace {

constexpr const char* kFile = "plasma-org.kde.plasma.desktop-appletsrc";
constexpr const char* kShell = "org.kde.plasmashell";
constexpr const char* kPlainPlugin = "org.kde.color";
constexpr const char* kPicturePlugin = "org.kde.image";
constexpr const char* kSlidesPlugin = "org.kde.slideshow";

constexpr const char* kColor = "Color";
constexpr const char* kPlugin = "Plugin";
constexpr const char* kImage = "Image";
constexpr const char* kSlide = "Slide";
constexpr const char* kScreen = "Screen";

/// The shell's default colour behind a transparent picture.
constexpr rgb_color kBehind = make_color(0, 0, 0);

/// The shell usually writes a new setting at once.
constexpr bigtime_t kLongestWrite = 2000000;

/// A line for each setting of each desktop: its number, the setting and the value. The line of the main monitor has the
/// monitor's size.
constexpr const char* kReadScript = "function line(d, name, value) { print(d.id + ' ' + name + ' ' + value + '\\n'); }"
                                    "function of(d, plugin, key) {"
                                    " d.currentConfigGroup = ['Wallpaper', plugin, 'General'];"
                                    " return String(d.readConfig(key, '')).replace(/\\n/g, ' ');"
                                    "}"
                                    "var shown = desktopForScreen(0);"
                                    "var all = desktops();"
                                    "for (var i = 0; i < all.length; i++) {"
                                    " var d = all[i];"
                                    " line(d, 'Color', of(d, 'org.kde.color', 'Color'));"
                                    " line(d, 'Plugin', d.wallpaperPlugin);"
                                    " line(d, 'Image', of(d, 'org.kde.image', 'Image'));"
                                    " line(d, 'Slide', of(d, 'org.kde.slideshow', 'Image'));"
                                    " if (shown && d.id == shown.id) {"
                                    "  var screen = screenGeometry(0);"
                                    "  line(d, 'Screen', Math.round(screen.width) + 'x' + Math.round(screen.height));"
                                    " }"
                                    "}";

std::optional<std::string> Evaluate(const std::string& script)
{
    return Tool::CallBus(
        {std::string("--dest=") + kShell, "/PlasmaShell", "org.kde.PlasmaShell.evaluateScript", "string:" + script});
}

std::string Quoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'' || character == '\\')
            quoted += '\\';
        if (character != '\n')
            quoted += character;
    }
    return quoted + "'";
}

std::string DesktopOf(const std::string& key)
{
    return key.substr(0, key.find('/'));
}

bool IsNumber(const std::string& text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

/// Where a setting stands in the file.
struct Place {
    std::vector<std::string> groups;
    std::string key;

    std::string Group() const
    {
        std::string joined;
        for (const std::string& group : groups)
            joined += (joined.empty() ? "" : "][") + group;
        return joined;
    }
};

Place PlaceOf(const std::string& desktop, const std::string& name)
{
    if (name == kPlugin)
        return {{"Containments", desktop}, "wallpaperplugin"};
    const std::string plugin = name == kColor ? kPlainPlugin : name == kImage ? kPicturePlugin : kSlidesPlugin;
    return {{"Containments", desktop, "Wallpaper", plugin, "General"}, name == kColor ? kColor : kImage};
}

Place PlaceOf(const std::string& key)
{
    return PlaceOf(DesktopOf(key), key.substr(key.find('/') + 1));
}

/// Returns "" if there is no settings folder.
std::string FilePath()
{
    const std::string settings = Environment::OwnSettings();
    return settings.empty() ? "" : settings + "/" + kFile;
}

std::optional<std::string> InFile(const std::string& key)
{
    const Place place = PlaceOf(key);
    return IniFile::Read(FilePath()).Value(place.Group(), place.key);
}

SettingsDesktop::Setting Make(const std::string& desktop, const std::string& name, const std::string& value)
{
    using Kind = SettingsDesktop::Kind;
    const Kind kind = name == kColor ? Kind::kColor : name == kPlugin ? Kind::kStyle : Kind::kRead;
    return {desktop + "/" + name, kind, value.empty() ? std::nullopt : std::optional(value), !value.empty()};
}

/// Returns the settings that a shell would read when it starts. The file also contains panels, which have another form
/// factor.
std::optional<SettingsDesktop::Settings> Stored()
{
    SettingsDesktop::Settings settings;
    const IniFile file = IniFile::Read(FilePath());
    for (const auto& [group, values] : file.Groups()) {
        const std::string start = "Containments][";
        const std::string desktop = group.rfind(start, 0) == 0 ? group.substr(start.size()) : "";
        const auto form = values.find("formfactor");
        if (!IsNumber(desktop) || form == values.end() || form->second != "0" || values.count("wallpaperplugin") == 0)
            continue;
        for (const char* name : {kColor, kPlugin, kImage, kSlide}) {
            const Place place = PlaceOf(desktop, name);
            settings.push_back(Make(desktop, name, file.Value(place.Group(), place.key).value_or("")));
        }
    }
    return settings.empty() ? std::nullopt : std::optional(settings);
}

/// @param value  nothing: removes the setting
bool WriteFile(const std::string& key, const std::optional<std::string>& value)
{
    const Place place = PlaceOf(key);
    for (const char* tool : {"kwriteconfig6", "kwriteconfig5"}) {
        if (!Tool::Exists(tool))
            continue;
        std::vector<std::string> arguments = {tool, "--file", kFile};
        for (const std::string& group : place.groups)
            arguments.insert(arguments.end(), {"--group", group});
        arguments.insert(arguments.end(), {"--key", place.key});
        if (value)
            arguments.push_back(*value);
        else
            arguments.emplace_back("--delete");
        return Tool::Run(arguments).has_value() && InFile(key) == value;
    }
    return false;
}

bool AwaitInFile(const std::string& key, const std::string& value)
{
    for (const bigtime_t until = system_time() + kLongestWrite; InFile(key) != value; snooze(10000))
        if (system_time() > until)
            return false;
    return true;
}

class PlasmaDesktop : public SettingsDesktop {
public:
    const char* Name() const override { return "plasma"; }
    std::vector<int> Descriptors() const override { return {fFile.Descriptor()}; }
    bool TakeNews() override { return fFile.TakeNews(); }

protected:
    std::optional<Settings> Current() const override
    {
        const std::optional<std::string> printed = Evaluate(kReadScript);
        if (!printed)
            return Tool::BusLacks(kShell) ? Stored() : std::nullopt;
        Settings settings;
        std::istringstream lines(*printed);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string desktop;
            std::string name;
            std::string value;
            if (!(words >> desktop >> name) || !IsNumber(desktop))
                continue;
            std::getline(words >> std::ws, value);
            settings.push_back(Make(desktop, name, value));
        }
        return settings;
    }

    bool Set(const std::string& key, const std::string& value) override
    {
        // The shell may keep the choice of a plug-in in memory until it ends, but it writes entries at once. It does
        // not write an entry whose value it believes to be in the file, so the script sets another value first. The
        // colour comes before the plug-in, which reads it when it is chosen.
        const auto write = [&value](const std::string& entry) {
            return " d.writeConfig(" + Quoted(entry) + ", ''); d.writeConfig(" + Quoted(entry) + ", " + Quoted(value) +
                   ");";
        };
        const std::string change = key == DesktopOf(key) + "/" + kColor
                                       ? "d.currentConfigGroup = ['Wallpaper', 'org.kde.color', 'General'];" +
                                             write(kColor) + " d.reloadConfig(); print(d.readConfig('Color'));"
                                       : "d.wallpaperPlugin = " + Quoted(value) + "; d.currentConfigGroup = [];" +
                                             write("wallpaperplugin") + " print(d.wallpaperPlugin);";
        const std::optional<std::string> printed = Evaluate("var all = desktops();"
                                                            "for (var i = 0; i < all.length; i++) {"
                                                            " var d = all[i];"
                                                            " if (d.id == " +
                                                            DesktopOf(key) + ") { " + change + " } }");
        if (!printed)
            return Tool::BusLacks(kShell) && WriteFile(key, value);
        return printed->find(value) != printed->npos;
    }

    /// A script of the shell cannot remove an entry, so this removes it from the shell's file once the shell has
    /// written that. The shell keeps the colour in memory, where nothing shows it once another plug-in is chosen, and
    /// does not write it again.
    bool Unset(const std::string& key) override
    {
        const std::optional<Settings> now = Current();
        if (const auto value = now ? Find(*now, key) : std::nullopt)
            AwaitInFile(key, *value);
        WriteFile(key, std::nullopt);
        // Without the tool for this, the entry stays.
        return true;
    }

    std::string PlainStyle(const std::string&) const override { return kPlainPlugin; }

    std::string FormatColor(rgb_color color) const override
    {
        char text[16];
        std::snprintf(text, sizeof(text), "%u,%u,%u", color.red, color.green, color.blue);
        return text;
    }

    std::optional<rgb_color> ParseColor(const std::string& value) const override
    {
        size_t end = 0;
        const std::optional<rgb_color> color = ParseDecimalColor(value, &end);
        return color ? color : ParseHexColor(value);
    }

    /// Returns the colour of the main monitor; while no shell runs, that of the first desktop.
    std::optional<rgb_color> Shown(const Settings& settings) const override
    {
        if (settings.empty())
            return std::nullopt;
        PlasmaWallpaper::Size screen;
        std::string desktop = DesktopOf(settings.front().key);
        for (const Setting& setting : settings)
            if (setting.value && setting.key == DesktopOf(setting.key) + "/" + kScreen &&
                std::sscanf(setting.value->c_str(), "%5dx%5d", &screen.width, &screen.height) == 2)
                desktop = DesktopOf(setting.key);
        const auto text = [&](const char* name) { return Find(settings, desktop + "/" + name).value_or(""); };
        const std::string plugin = text(kPlugin);
        if (plugin == kPlainPlugin)
            return ParseColor(text(kColor).empty() ? PlasmaWallpaper::DefaultColor() : text(kColor));
        if (plugin != kPicturePlugin && plugin != kSlidesPlugin)
            return std::nullopt;
        const std::optional<std::string> picture = PlasmaWallpaper::PictureOf(
            text(plugin == kPicturePlugin ? kImage : kSlide), screen, KdeSettings::IsDark().value_or(false));
        return picture ? AverageOfFile(*picture, kBehind) : std::nullopt;
    }

private:
    FileWatch fFile{FilePath()};
};

} // namespace

std::unique_ptr<DesktopBackend> MakePlasmaDesktop()
{
    return std::make_unique<PlasmaDesktop>();
}

} // namespace kits
