// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/KdeSettings.h"

#include "kits/interface/platform/desktops/IniFile.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"
#include "kits/kernel/Bounds.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace kits::KdeSettings {

namespace {

constexpr const char* kGlobals = "kdeglobals";
constexpr const char* kWindow = "Colors:Window";
constexpr const char* kBackground = "BackgroundNormal";

std::string Variable(const char* name, const char* otherwise)
{
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

void AddFolders(std::vector<std::string>& folders, const std::string& list)
{
    std::istringstream names(list);
    size_t count = 0;
    for (std::string name; count < bounds::kMostListedFolders && std::getline(names, name, ':'); ++count)
        if (!name.empty() && name.front() == '/')
            folders.push_back(name);
}

std::vector<std::string> SettingsFolders()
{
    std::vector<std::string> folders;
    BPath own;
    if (find_directory(B_COMMON_SETTINGS_DIRECTORY, &own) == B_OK) {
        folders.emplace_back(own.Path());
        // The settings of the chosen look itself, which a session puts among the system's.
        folders.push_back(std::string(own.Path()) + "/kdedefaults");
    }
    AddFolders(folders, Variable("XDG_CONFIG_DIRS", "/etc/xdg"));
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
    std::vector<std::string> folders;
    const std::string home = Variable("HOME", "");
    AddFolders(folders, Variable("XDG_DATA_HOME", (home + "/.local/share").c_str()));
    AddFolders(folders, Variable("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
    for (const std::string& folder : folders) {
        const std::string path = folder + "/" + name;
        if (access(path.c_str(), R_OK) == 0)
            return path;
    }
    return std::nullopt;
}

std::optional<bool> IsDarkColor(const std::string& value)
{
    int red = 0;
    int green = 0;
    int blue = 0;
    int end = 0;
    if (std::sscanf(value.c_str(), "%4d,%4d,%4d%n", &red, &green, &blue, &end) != 3)
        return std::nullopt;
    const char next = value.c_str()[end];
    if (next != '\0' && next != ',')
        return std::nullopt;
    for (const int part : {red, green, blue})
        if (part < 0 || part > 255)
            return std::nullopt;
    return kits::IsDarkColor(make_color(static_cast<uint8>(red), static_cast<uint8>(green), static_cast<uint8>(blue)));
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
