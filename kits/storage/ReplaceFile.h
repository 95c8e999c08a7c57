// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <cstddef>

namespace kits {

/// Makes these bytes the whole contents of a file that the user has named: at every moment, and after a loss of power
/// too, the file is as it was or as it is to be. A link is followed; a file that is replaced keeps its permissions, a
/// new one has those that the process gives to new files. What is no plain file (a pipe, a terminal) is written to as
/// it is.
///
/// Any thread; waits for the disk.
/// @param path  absolute or relative, not empty
/// @return B_OK; B_BAD_VALUE, B_ENTRY_NOT_FOUND or B_NOT_A_DIRECTORY for a path that names nothing, B_IS_A_DIRECTORY
///         for a folder, else why it could not be written
status_t ReplaceFile(const char* path, const void* data, size_t size);

} // namespace kits
