// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <bit>
#include <string>
#include <string_view>

namespace kits {

/// Appends items of CBOR (RFC 8949), each in its shortest form; floating-point numbers keep their size and all their
/// bits.
class CborWriter {
public:
    /// @param bytes  not owned; must stay
    explicit CborWriter(std::string* bytes)
        : fBytes(*bytes)
    {
    }

    /// Starts an array of this many items.
    void StartArray(uint64 count) { AddHead(4, count); }
    /// Starts a map of this many pairs of items.
    void StartMap(uint64 count) { AddHead(5, count); }

    void AddUnsigned(uint64 value) { AddHead(0, value); }
    void AddInteger(int64 value)
    {
        value < 0 ? AddHead(1, ~static_cast<uint64>(value)) : AddHead(0, static_cast<uint64>(value));
    }
    void AddBytes(std::string_view bytes) { AddString(2, bytes); }
    /// @param text  UTF-8
    void AddText(std::string_view text) { AddString(3, text); }
    void AddBool(bool value) { AddHead(7, value ? 21 : 20); }
    void AddFloat(float value) { AddNumber(7, 26, std::bit_cast<uint32>(value), 4); }
    void AddDouble(double value) { AddNumber(7, 27, std::bit_cast<uint64>(value), 8); }

private:
    void AddHead(uint8 majorType, uint64 value);
    void AddNumber(uint8 majorType, uint8 form, uint64 value, int size);
    void AddString(uint8 majorType, std::string_view bytes);

    std::string& fBytes;
};

} // namespace kits
