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

} // namespace kits
