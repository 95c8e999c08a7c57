// SPDX-License-Identifier: MIT
#include "kits/application/messages/Crc32.h"

#include <array>

namespace kits {

namespace {

/// [0] is the table for a byte at the end; [n] that for a byte with n bytes after it.
constexpr std::array<std::array<uint32, 256>, 4> MakeTables()
{
    std::array<std::array<uint32, 256>, 4> tables{};
    for (uint32 byte = 0; byte < 256; ++byte) {
        uint32 sum = byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320u : 0);
        tables[0][byte] = sum;
    }
    for (size_t i = 1; i < tables.size(); ++i) {
        for (uint32 byte = 0; byte < 256; ++byte) {
            const uint32 before = tables[i - 1][byte];
            tables[i][byte] = (before >> 8) ^ tables[0][before & 0xFF];
        }
    }
    return tables;
}

constexpr auto kTables = MakeTables();

} // namespace

uint32 Crc32(std::string_view bytes)
{
    uint32 sum = 0xFFFFFFFFu;
    size_t i = 0;
    const auto byteAt = [&bytes](size_t index) { return static_cast<uint32>(static_cast<uint8>(bytes[index])); };
    for (; i + 4 <= bytes.size(); i += 4) {
        sum ^= byteAt(i) | byteAt(i + 1) << 8 | byteAt(i + 2) << 16 | byteAt(i + 3) << 24;
        sum =
            kTables[3][sum & 0xFF] ^ kTables[2][sum >> 8 & 0xFF] ^ kTables[1][sum >> 16 & 0xFF] ^ kTables[0][sum >> 24];
    }
    for (; i < bytes.size(); ++i)
        sum = (sum >> 8) ^ kTables[0][(sum ^ byteAt(i)) & 0xFF];
    return ~sum;
}

} // namespace kits
