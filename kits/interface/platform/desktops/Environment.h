// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace kits {

/// The environment of this process, and the folders that it names. Any thread.
namespace Environment {

/// Returns the value of a variable; "" if it is not set.
std::string Value(const char* name);

/// Returns the parts of a list separated by ':', without empty ones. Parts beyond bounds::kMostListedFolders are left
/// out.
/// @param otherwise  the list if the variable is not set or empty
std::vector<std::string> List(const char* name, const std::string& otherwise = "");
/// The same without relative paths.
std::vector<std::string> Folders(const char* name, const std::string& otherwise);

/// Returns the user's settings folder; "" if there is none.
std::string OwnSettings();
/// Returns the folders of settings: the user's own, then the system's.
std::vector<std::string> SettingsFolders();

/// True if the session is of this desktop: $XDG_CURRENT_DESKTOP is a list of such names.
bool IsSessionOf(const std::string& desktop);

} // namespace Environment

} // namespace kits
