// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/Environment.h"

#include "kits/kernel/Bounds.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace kits::Environment {

std::string Value(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::vector<std::string> List(const char* name, const std::string& otherwise)
{
    const std::string value = Value(name);
    std::istringstream list(value.empty() ? otherwise : value);
    std::vector<std::string> parts;
    size_t count = 0;
    for (std::string part; count < bounds::kMostListedFolders && std::getline(list, part, ':'); count++)
        if (!part.empty())
            parts.push_back(part);
    return parts;
}

std::vector<std::string> Folders(const char* name, const std::string& otherwise)
{
    std::vector<std::string> folders = List(name, otherwise);
    std::erase_if(folders, [](const std::string& folder) { return folder.front() != '/'; });
    return folders;
}

std::string OwnSettings()
{
    BPath path;
    return find_directory(B_COMMON_SETTINGS_DIRECTORY, &path) == B_OK ? path.Path() : "";
}

std::vector<std::string> SettingsFolders()
{
    std::vector<std::string> folders = Folders("XDG_CONFIG_DIRS", "/etc/xdg");
    if (const std::string own = OwnSettings(); !own.empty())
        folders.insert(folders.begin(), own);
    return folders;
}

bool IsSessionOf(const std::string& desktop)
{
    const std::vector<std::string> names = List("XDG_CURRENT_DESKTOP");
    return std::find(names.begin(), names.end(), desktop) != names.end();
}

} // namespace kits::Environment
