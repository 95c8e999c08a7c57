// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"

#include <string>

/// The entry that starts this program with the user's session, in the folder "autostart" of the settings folder. It
/// exists while there is something to show. A correct entry is not touched, so that changes by the user's desktop (for
/// example, that it is switched off) stay. A link in its place is the user's: the program neither writes through it nor
/// replaces nor removes it. The folder may be a link.
namespace Autostart {

/// The file's name.
inline constexpr const char* kFile = "org.example.qel.desktop-charts.desktop";

/// Returns the content of the entry.
/// @param program  absolute path of this program; special characters in it are quoted
std::string EntryFor(const std::string& program);

/// Returns the path of the entry; empty without a settings folder.
std::string Place();

/// Writes the entry unless it exists for this program: either the whole entry, or the previous one stays.
/// @return B_OK if it is on the disk; B_NOT_ALLOWED for a link that leads to no entry for this program
status_t Enable(const std::string& program);
/// Removes it; returns B_OK also if there is none, and B_NOT_ALLOWED for a link.
status_t Disable();

} // namespace Autostart
