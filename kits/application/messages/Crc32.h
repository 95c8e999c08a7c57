// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string_view>

namespace kits {

/// The CRC-32 of zip and Ethernet: detects all damage of up to 32 consecutive bits, and misses other damage once in 4
/// billion cases.
uint32 Crc32(std::string_view bytes);

} // namespace kits
