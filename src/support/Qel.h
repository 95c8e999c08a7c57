// SPDX-License-Identifier: MIT
#pragma once

/// What the program says of itself: one place for its signature, version and maker.

/// The application's signature: names its settings files, and charts outside the application find and launch it by it.
inline constexpr const char* signature = "application/x-vnd.kvt-Qel";

/// Of the program that shows charts on the desktop; the end of it is that program's name.
inline constexpr const char* kDesktopSignature = "application/x-vnd.kvt-Qel-Desktop";

/// Stamped into the user's store at exit; a store with another version is asked about at the next start.
inline constexpr const char* kVersion = "0.3.0";

/// The name of the program to the user, in no language. Both programs are this one: the host's windows belong to the
/// same entry of the menu.
inline constexpr const char* kProgramName = "Qel";

/// The name of the program's desktop entry, without ".desktop": the maker's home, backwards.
inline constexpr const char* kDesktopEntry = "org.example.qel";

inline constexpr const char* kMakerName = "The Qel developers";
inline constexpr const char* kMakerAddress = "qel@example.org";
inline constexpr const char* kMakerHome = "https://example.org/qel";
