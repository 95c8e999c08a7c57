// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"

#include <string>

/// The entry that starts this program with the user's session, in the folder "autostart" of the settings folder. It is
/// there while there is something to show. One that is right already is not touched, so that what the user's desktop
/// has noted in it (that it is switched off, for example) stays. A link in its place is the user's: it is neither
/// followed to be written to nor replaced nor removed. The folder may be a link.
namespace Autostart {

/// The file's name.
inline constexpr const char* kFile = "org.example.qel.desktop-charts.desktop";

/// What the entry says.
/// @param program  absolute path of this program; whatever stands in it is quoted
std::string EntryFor(const std::string& program);

/// Where the entry is or would be; empty without a settings folder.
std::string Place();

/// Writes the entry unless it is there for this program: whole, or the one before stays.
/// @return B_OK when it is on the disk; B_NOT_ALLOWED for a link that leads to no entry for this program
status_t Enable(const std::string& program);
/// Removes it; B_OK too when there is none, B_NOT_ALLOWED for a link.
status_t Disable();

} // namespace Autostart
