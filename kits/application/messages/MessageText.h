// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <string>
#include <string_view>

namespace kits {

// Shared by the writer and the reader of flattened messages. See MessageFormat.h.

inline constexpr std::string_view kMessageMark = "\xD9\xD9\xF7"; ///< the tag 55799
inline constexpr char kArrayOfTwo = '\x82';
inline constexpr char kArrayOfThree = '\x83';
inline constexpr char kFourByteInteger = '\x1A';
inline constexpr size_t kChecksumSize = 5;
inline constexpr std::string_view kVariableMark = "variable";

/// Returns whether the format treats values of this type as bytes without structure.
bool IsOpaqueType(type_code type);
/// Returns the four characters of a code; empty unless all are printable.
std::string TextOfCode(uint32 code);
/// Converts four printable characters to a code. Returns false for any other text.
bool CodeOfText(std::string_view text, uint32* code);

} // namespace kits
