// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/KdeSettings.h"

#include "kits/interface/platform/desktops/Environment.h"
#include "kits/interface/platform/desktops/IniFile.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"

#include <unistd.h>

namespace kits::KdeSettings {

namespace {

constexpr const char* kGlobals = "kdeglobals";
constexpr const char* kWindow = "Colors:Window";
constexpr const char* kBackground = "BackgroundNormal";

std::vector<std::string> SettingsFolders()
{
    std::vector<std::string> folders = Environment::Folders("XDG_CONFIG_DIRS", "/etc/xdg");
    // The second of them holds the settings of the chosen look, which a session puts among the system's.
    if (const std::string own = Environment::OwnSettings(); !own.empty())
        folders.insert(folders.begin(), {own, own + "/kdedefaults"});
    return folders;
}

std::optional<std::string> SchemeFile()
{
    const std::optional<std::string> scheme = Value(kGlobals, "General", "ColorScheme");
    return scheme ? DataFile("color-schemes/" + *scheme + ".colors") : std::nullopt;
}

} // namespace

std::optional<std::string> Value(const std::string& file, const std::string& group, const std::string& key)
{
    for (const std::string& folder : SettingsFolders()) {
        const std::optional<std::string> value = IniFile::Read(folder + "/" + file).Value(group, key);
        if (value && !value->empty())
            return value;
    }
    return std::nullopt;
}

std::optional<std::string> DataFile(const std::string& name)
{
    using Environment::Folders;
    for (const auto& folders : {Folders("XDG_DATA_HOME", Environment::Value("HOME") + "/.local/share"),
                                Folders("XDG_DATA_DIRS", "/usr/local/share:/usr/share")}) {
        for (const std::string& folder : folders) {
            const std::string path = folder + "/" + name;
            if (access(path.c_str(), R_OK) == 0)
                return path;
        }
    }
    return std::nullopt;
}

std::optional<bool> IsDarkColor(const std::string& value)
{
    size_t end = 0;
    const std::optional<rgb_color> color = ParseDecimalColor(value, &end);
    const bool isWhole = end == value.size() || value[end] == ',';
    return color && isWhole ? std::optional(kits::IsDarkColor(*color)) : std::nullopt;
}

std::optional<bool> IsDark()
{
    // The file holds the colours themselves once the user has chosen a scheme; before, only the look's name for them.
    std::optional<std::string> color = Value(kGlobals, kWindow, kBackground);
    if (!color) {
        if (const std::optional<std::string> scheme = SchemeFile())
            color = IniFile::Read(*scheme).Value(kWindow, kBackground);
    }
    return color ? IsDarkColor(*color) : std::nullopt;
}

std::vector<std::string> FilesOfIsDark()
{
    std::vector<std::string> files;
    for (const std::string& folder : SettingsFolders())
        files.push_back(folder + "/" + kGlobals);
    return files;
}

} // namespace kits::KdeSettings
