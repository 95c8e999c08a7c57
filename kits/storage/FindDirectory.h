// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

class BPath;

enum directory_which : int32 {
    /// Where programs keep their settings: $XDG_CONFIG_HOME, or .config in the home folder. A missing home folder is
    /// never created; a folder that XDG_CONFIG_HOME names is.
    B_COMMON_SETTINGS_DIRECTORY = 2010,
};

/// Finds a folder of the user's. Variables that are unset, empty or hold a relative path count as missing.
/// @param path      set to the folder, even to one that could not be created; unset on other failures
/// @param createIt  create the folder and its parents if missing (mode 0700)
/// @return B_ENTRY_NOT_FOUND if there is no home or, without createIt, no such folder; B_BAD_VALUE for another
///         directory; otherwise the reason why the folder could not be created
status_t find_directory(directory_which which, BPath* path, bool createIt = false);
