// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>
#include <string_view>

namespace kits {

// What the writer and the reader of flattened messages have in common. See MessageFormat.h.

inline constexpr std::string_view kMessageMark = "\xD9\xD9\xF7"; ///< the tag 55799
inline constexpr char kArrayOfTwo = '\x82';
inline constexpr char kArrayOfThree = '\x83';
inline constexpr char kFourByteInteger = '\x1A';
inline constexpr size_t kChecksumSize = 5;
inline constexpr std::string_view kVariableMark = "variable";

/// Whether values of this type are bytes that the format says nothing about.
bool IsOpaqueType(type_code type);
/// The four characters of a code; empty unless all are printable.
std::string TextOfCode(uint32 code);
/// The code that four printable characters stand for. False for any other text.
bool CodeOfText(std::string_view text, uint32* code);
bool IsUtf8(std::string_view text);

} // namespace kits
