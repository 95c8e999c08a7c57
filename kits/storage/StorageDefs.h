// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <sys/types.h>

/// Open modes of a BFile; one of the first three, combined with any of the others.
enum : uint32 {
    B_READ_ONLY = 0x0000,
    B_WRITE_ONLY = 0x0001,
    B_READ_WRITE = 0x0002,
    B_FAIL_IF_EXISTS = 0x0100, ///< with B_CREATE_FILE: B_FILE_EXISTS if the name is taken, even by a link
    B_CREATE_FILE = 0x0200,    ///< creates a missing file, accessible to the user alone
    B_ERASE_FILE = 0x0400,     ///< truncates the file, after every other check has passed
    /// For fixed names in a folder to which everybody can write: the last part of the path is not followed if it is a
    /// link, and the file must be a plain one with a single name that belongs to the user (otherwise B_NOT_ALLOWED, and
    /// the file stays unchanged).
    B_PRIVATE_FILE = 0x01000000,
};
