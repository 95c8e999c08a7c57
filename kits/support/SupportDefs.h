// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Errors.h"
#include "kits/kernel/Types.h"

/// Lengths of names, including the terminating byte.

inline constexpr size_t B_FILE_NAME_LENGTH = 256;
inline constexpr size_t B_PATH_NAME_LENGTH = 4096;
