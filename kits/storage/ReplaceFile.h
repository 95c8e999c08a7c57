// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <cstddef>

namespace kits {

/// Replaces the whole contents of a file that the user has named: at every moment, and even after a loss of power, the
/// file has either its old or its new contents. Follows a link; a replaced file keeps its permissions, and a new one
/// has those that the process gives to new files. Writes directly to anything but a plain file (a pipe, a terminal).
///
/// Any thread; waits for the disk.
/// @param path  absolute or relative, not empty
/// @return B_OK; B_BAD_VALUE, B_ENTRY_NOT_FOUND or B_NOT_A_DIRECTORY for an invalid path, B_IS_A_DIRECTORY for a
///         folder, otherwise the reason why it could not be written
status_t ReplaceFile(const char* path, const void* data, size_t size);

} // namespace kits
