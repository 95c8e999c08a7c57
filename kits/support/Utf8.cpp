// SPDX-License-Identifier: MIT
#include "kits/support/Utf8.h"

#include "kits/kernel/Types.h"

namespace kits {

size_t Utf8Length(std::string_view text)
{
    const auto byteAt = [text](size_t i) { return i < text.size() ? static_cast<uint8>(text[i]) : 0u; };
    const uint32 first = byteAt(0);
    if (first < 0x80)
        return 1;
    if (first < 0xC2 || first > 0xF4)
        return 0;
    const size_t following = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    uint32 character = first & (0x3Fu >> following);
    for (size_t i = 1; i <= following; ++i) {
        if ((byteAt(i) & 0xC0) != 0x80)
            return 0;
        character = character << 6 | (byteAt(i) & 0x3F);
    }
    const uint32 least = following == 1 ? 0x80u : following == 2 ? 0x800u : 0x10000u;
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return character < least || character > 0x10FFFF || isSurrogate ? 0 : following + 1;
}

bool IsUtf8(std::string_view text)
{
    while (!text.empty()) {
        const size_t length = Utf8Length(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

} // namespace kits
