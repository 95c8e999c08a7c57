// SPDX-License-Identifier: MIT
#pragma once

/// The program's identity: one place for its signature, version and maker.

/// The application's signature: names its settings files, and charts outside the application use it to find and launch
/// the application.
inline constexpr const char* signature = "application/x-vnd.kvt-Qel";

/// The signature of the program that shows charts on the desktop; it ends with that program's name.
inline constexpr const char* kDesktopSignature = "application/x-vnd.kvt-Qel-Desktop";

/// Stamped into the user's store at exit; for a store with another version, the next start asks the user.
inline constexpr const char* kVersion = "0.3.0";

/// The name of the program for the user, in no language. Both programs have it: the host's windows belong to the same
/// menu entry.
inline constexpr const char* kProgramName = "Qel";

/// The name of the program's desktop entry, without ".desktop": the maker's home page, reversed.
inline constexpr const char* kDesktopEntry = "org.example.qel";

inline constexpr const char* kMakerName = "The Qel developers";
inline constexpr const char* kMakerAddress = "qel@example.org";
inline constexpr const char* kMakerHome = "https://example.org/qel";
