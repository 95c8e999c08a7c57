// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

struct entry_ref;

/// The two files by which the about window reaches the maker: opened with the user's own programs, they start a mail
/// and show the home page. They have fixed names that anybody could take first, so they are opened only if they are
/// plain files of the user's.

inline constexpr const char* kMailFile = "/tmp/delme.qeltempemail";
inline constexpr const char* kBookmarkFile = "/tmp/delme.qeltempbookmark";

/// Writes a mail from the maker, for the user to answer: attributes and a body.
/// @param ref  set to the file
/// @return B_OK if file and reference are good; ignores failures of single attributes
status_t WriteMailFile(const char* path, entry_ref* ref);

/// Writes a bookmark of the maker's home page: attributes only.
status_t WriteBookmarkFile(const char* path, entry_ref* ref);

/// Removes both, if they exist.
void RemoveAboutFiles();
