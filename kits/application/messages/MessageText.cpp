// SPDX-License-Identifier: MIT
#include "kits/application/messages/MessageText.h"

#include "kits/application/messages/MessageField.h"
#include "kits/support/TypeConstants.h"

#include <algorithm>

namespace kits {

namespace {

bool IsPrintable(std::string_view text)
{
    return std::all_of(
        text.begin(), text.end(), [](char c) { return c >= 0x20 && c <= 0x7E; });
}

} // namespace

bool IsOpaqueType(type_code type)
{
    return FixedSizeOf(type) == 0 && type != B_STRING_TYPE && type != B_MESSAGE_TYPE;
}

std::string TextOfCode(uint32 code)
{
    const std::string text = {static_cast<char>(code >> 24 & 0xFF), static_cast<char>(code >> 16 & 0xFF),
                              static_cast<char>(code >> 8 & 0xFF), static_cast<char>(code & 0xFF)};
    return IsPrintable(text) ? text : std::string();
}

bool CodeOfText(std::string_view text, uint32* code)
{
    if (text.size() != 4 || !IsPrintable(text))
        return false;
    *code = 0;
    for (const char c : text)
        *code = *code << 8 | static_cast<uint8>(c);
    return true;
}

bool IsUtf8(std::string_view text)
{
    const auto byteAt = [text](size_t i) { return i < text.size() ? static_cast<uint8>(text[i]) : 0u; };
    for (size_t i = 0; i < text.size();) {
        const uint32 first = byteAt(i);
        if (first < 0x80) {
            ++i;
            continue;
        }
        const size_t following = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
        if (first < 0xC2 || first > 0xF4)
            return false;
        uint32 character = first & (0x3Fu >> following);
        for (size_t j = 1; j <= following; ++j) {
            if ((byteAt(i + j) & 0xC0) != 0x80)
                return false;
            character = character << 6 | (byteAt(i + j) & 0x3F);
        }
        // An overlong form, a surrogate, or beyond the last character.
        if (character < (following == 1   ? 0x80u
                         : following == 2 ? 0x800u
                                          : 0x10000u) ||
            character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF))
            return false;
        i += following + 1;
    }
    return true;
}

} // namespace kits
