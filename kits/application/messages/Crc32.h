// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string_view>

namespace kits {

/// The CRC-32 of zip and Ethernet: finds every damage of up to 32 bits in a row, and misses others once in 4 billion.
uint32 Crc32(std::string_view bytes);

} // namespace kits
