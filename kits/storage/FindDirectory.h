// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

class BPath;

enum directory_which : int32 {
    /// Where programs keep their settings: $XDG_CONFIG_HOME, else .config in the home folder. A home folder that is
    /// not there is never made, a folder that XDG_CONFIG_HOME names is.
    B_COMMON_SETTINGS_DIRECTORY = 2010,
    /// For sockets and lock files of this session, readable by the user alone: $XDG_RUNTIME_DIR, else a folder of the
    /// user's own under /tmp. Neither is taken unless it is a real folder that belongs to the user and is closed to
    /// others.
    B_USER_RUNTIME_DIRECTORY = 4000,
};

/// Finds a folder of the user's. Variables that are unset, empty or hold a relative path count as missing.
/// @param path      set to the folder, also to one of settings that could not be made; unset on other failures
/// @param createIt  make the folder, and those above it, when missing (mode 0700)
/// @return B_ENTRY_NOT_FOUND when there is no home or, without createIt, no such folder; B_BAD_VALUE for another
///         directory; else why the folder could not be made or may not be used
status_t find_directory(directory_which which, BPath* path, bool createIt = false);
