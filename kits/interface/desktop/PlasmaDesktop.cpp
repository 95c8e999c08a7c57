#include "kits/interface/desktop/PlasmaDesktop.h"

#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <sys/inotify.h>
#include <unistd.h>

namespace kits {

namespace {

constexpr const char* kFile = "plasma-org.kde.plasma.desktop-appletsrc";
constexpr const char* kPlainPlugin = "org.kde.color";
constexpr const char* kPicturePlugin = "org.kde.image";

constexpr const char* kColor = "Color";
constexpr const char* kPlugin = "Plugin";
constexpr const char* kImage = "Image";

/// A line for each setting of each desktop: its number, the setting and the value.
constexpr const char* kReadScript = "var all = desktops();"
                                    "for (var i = 0; i < all.length; i++) {"
                                    " var d = all[i];"
                                    " d.currentConfigGroup = ['Wallpaper', 'org.kde.color', 'General'];"
                                    " print(d.id + ' Color ' + d.readConfig('Color', '') + '\\n');"
                                    " print(d.id + ' Plugin ' + d.wallpaperPlugin + '\\n');"
                                    " d.currentConfigGroup = ['Wallpaper', 'org.kde.image', 'General'];"
                                    " print(d.id + ' Image ' + d.readConfig('Image', '') + '\\n');"
                                    "}";

std::optional<std::string> Evaluate(const std::string& script)
{
    return Tool::Run({"dbus-send", "--session", "--print-reply=literal", "--reply-timeout=4000",
                      "--dest=org.kde.plasmashell", "/PlasmaShell", "org.kde.PlasmaShell.evaluateScript",
                      "string:" + script});
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

bool IsColor(const std::string& key)
{
    return key == DesktopOf(key) + "/" + kColor;
}

} // namespace

PlasmaDesktop::PlasmaDesktop()
    : fFolder(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    BPath path;
    if (find_directory(B_COMMON_SETTINGS_DIRECTORY, &path) == B_OK)
        inotify_add_watch(fFolder.Get(), path.Path(), IN_CLOSE_WRITE | IN_MOVED_TO);
}

std::optional<SettingsDesktop::Settings> PlasmaDesktop::Current() const
{
    const std::optional<std::string> printed = Evaluate(kReadScript);
    if (!printed)
        return std::nullopt;
    Settings settings;
    std::istringstream lines(*printed);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string desktop;
        std::string name;
        std::string value;
        if (!(words >> desktop >> name) || desktop.find_first_not_of("0123456789") != desktop.npos)
            continue;
        std::getline(words >> std::ws, value);
        const Kind kind = name == kColor ? Kind::kColor : name == kPlugin ? Kind::kStyle : Kind::kRead;
        settings.push_back(
            {desktop + "/" + name, kind, value.empty() ? std::nullopt : std::optional(value), !value.empty()});
    }
    return settings;
}

bool PlasmaDesktop::Set(const std::string& key, const std::string& value)
{
    // Written before the plug-in is chosen, a colour is there when the plug-in looks.
    const std::string change = IsColor(key) ? "d.currentConfigGroup = ['Wallpaper', 'org.kde.color', 'General'];"
                                              " d.writeConfig('Color', " +
                                                  Quoted(value) + "); d.reloadConfig();"
                                            : "d.wallpaperPlugin = " + Quoted(value) + ";";
    return Evaluate("var all = desktops();"
                    "for (var i = 0; i < all.length; i++) {"
                    " var d = all[i];"
                    " if (d.id == " +
                    DesktopOf(key) + ") { " + change + " } }")
        .has_value();
}

/// A script of the shell cannot take an entry away. Where there is no tool for it either, the colour stays, which
/// nothing shows once the plug-in is another.
bool PlasmaDesktop::Unset(const std::string& key)
{
    for (const char* tool : {"kwriteconfig6", "kwriteconfig5"}) {
        if (!Tool::Exists(tool))
            continue;
        return Tool::Run({tool, "--file", kFile, "--group", "Containments", "--group", DesktopOf(key), "--group",
                          "Wallpaper", "--group", kPlainPlugin, "--group", "General", "--key", kColor, "--delete"})
            .has_value();
    }
    return true;
}

std::string PlasmaDesktop::PlainStyle(const std::string&) const
{
    return kPlainPlugin;
}

std::string PlasmaDesktop::FormatColor(rgb_color color) const
{
    char text[16];
    std::snprintf(text, sizeof(text), "%u,%u,%u", color.red, color.green, color.blue);
    return text;
}

std::optional<rgb_color> PlasmaDesktop::ParseColor(const std::string& value) const
{
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    if (std::sscanf(value.c_str(), "%3u,%3u,%3u", &red, &green, &blue) == 3 && red < 256 && green < 256 && blue < 256)
        return make_color(static_cast<uint8>(red), static_cast<uint8>(green), static_cast<uint8>(blue));
    return ParseHexColor(value);
}

/// That of the first desktop.
std::optional<rgb_color> PlasmaDesktop::Shown(const Settings& settings) const
{
    if (settings.empty())
        return std::nullopt;
    const std::string desktop = DesktopOf(settings.front().key) + "/";
    const std::string* plugin = Find(settings, desktop + kPlugin);
    const std::string* value = nullptr;
    if (plugin != nullptr && *plugin == kPlainPlugin) {
        value = Find(settings, desktop + kColor);
        return value != nullptr ? ParseColor(*value) : std::nullopt;
    }
    if (plugin != nullptr && *plugin == kPicturePlugin)
        value = Find(settings, desktop + kImage);
    return value != nullptr ? AverageOfFile(*value) : std::nullopt;
}

std::vector<int> PlasmaDesktop::Descriptors() const
{
    return {fFolder.Get()};
}

std::vector<std::string> PlasmaDesktop::TakeChanges()
{
    std::vector<std::string> changes;
    alignas(inotify_event) char bytes[4096];
    for (ssize_t size; (size = read(fFolder.Get(), bytes, sizeof(bytes))) > 0;) {
        for (ssize_t at = 0; at < size;) {
            inotify_event event;
            std::memcpy(&event, bytes + at, sizeof(event));
            const char* name = bytes + at + sizeof(event);
            if (event.len > 0 && std::strcmp(name, kFile) == 0)
                changes.emplace_back(name);
            at += static_cast<ssize_t>(sizeof(event) + event.len);
        }
    }
    return changes;
}

} // namespace kits
