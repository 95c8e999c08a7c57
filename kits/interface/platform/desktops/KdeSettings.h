// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kits {

/// Values of KDE's settings files: the user's own first, then those of the chosen look, then the system's. Any thread;
/// reads files only.
namespace KdeSettings {

/// @param file   in the settings folders: "kdeglobals", ...
/// @param group  as for IniFile
/// @return the first value that exists and is not empty
std::optional<std::string> Value(const std::string& file, const std::string& group, const std::string& key);

/// A file or folder of programs' data: the user's own first, then the system's.
/// @param name  relative to the data folders
/// @return the path; nothing if there is none
std::optional<std::string> DataFile(const std::string& name);

/// True if windows are dark; nothing if the files do not say.
std::optional<bool> IsDark();

/// The files that IsDark() depends on, including those that do not exist.
std::vector<std::string> FilesOfIsDark();

/// True if a value "r,g,b" is a dark colour; nothing if it is no colour.
std::optional<bool> IsDarkColor(const std::string& value);

} // namespace KdeSettings

} // namespace kits
