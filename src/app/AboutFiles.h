// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

struct entry_ref;

/// The two files by which the about window reaches the maker: opened with the user's own programs, they start a mail
/// and show the home page. They lie under fixed names that anybody could take first: so they are opened only where they
/// are plain files of the user's.

inline constexpr const char* kMailFile = "/tmp/delme.qeltempemail";
inline constexpr const char* kBookmarkFile = "/tmp/delme.qeltempbookmark";

/// Writes a mail from the maker, to be answered: attributes and a body.
/// @param ref  set to the file
/// @return B_OK when file and reference are good; failures of single attributes are ignored
status_t WriteMailFile(const char* path, entry_ref* ref);

/// Writes a bookmark of the maker's home page: attributes alone.
status_t WriteBookmarkFile(const char* path, entry_ref* ref);

/// Removes both, where they are.
void RemoveAboutFiles();
