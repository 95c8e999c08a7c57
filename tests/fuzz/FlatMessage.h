// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/messages/Crc32.h"
#include "kits/kernel/Types.h"

#include <string>

/// A flattened message around a map of fields: mutations of the map get a correct length and checksum.
inline std::string FlatMessage(const std::string& fields)
{
    const auto integer = [](uint32 value) {
        std::string bytes = "\x1A";
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>(value >> shift & 0xFF);
        return bytes;
    };
    return "\xD9\xD9\xF7\x83" + integer(static_cast<uint32>(fields.size()) + 5) + fields + integer(kits::Crc32(fields));
}
