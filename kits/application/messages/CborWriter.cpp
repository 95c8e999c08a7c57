// SPDX-License-Identifier: MIT
#include "kits/application/messages/CborWriter.h"

#include <limits>

namespace kits {

void CborWriter::AddHead(uint8 majorType, uint64 value)
{
    // A small value stands in the head itself; after larger heads, the value follows in 1, 2, 4 or 8 bytes.
    constexpr uint8 kFirstForm = 24;
    if (value < kFirstForm)
        AddNumber(majorType, static_cast<uint8>(value), 0, 0);
    else if (value <= std::numeric_limits<uint8>::max())
        AddNumber(majorType, kFirstForm, value, 1);
    else if (value <= std::numeric_limits<uint16>::max())
        AddNumber(majorType, kFirstForm + 1, value, 2);
    else if (value <= std::numeric_limits<uint32>::max())
        AddNumber(majorType, kFirstForm + 2, value, 4);
    else
        AddNumber(majorType, kFirstForm + 3, value, 8);
}

void CborWriter::AddNumber(uint8 majorType, uint8 form, uint64 value, int size)
{
    char item[9];
    item[0] = static_cast<char>(majorType << 5 | form);
    for (int i = size; i > 0; --i, value >>= 8)
        item[i] = static_cast<char>(value & 0xFF);
    fBytes.append(item, static_cast<size_t>(1 + size));
}

void CborWriter::AddString(uint8 majorType, std::string_view bytes)
{
    AddHead(majorType, bytes.size());
    fBytes.append(bytes);
}

} // namespace kits
