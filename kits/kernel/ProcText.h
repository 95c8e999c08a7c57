// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <optional>
#include <string_view>

namespace kits {

/// The first steps of every parser of the kernel's text files. A file may be cut anywhere, so a number counts only
/// if what ends it is there too.

/// The number at the beginning of `text`, which is advanced past it; one that does not fit gives the largest.
/// Nothing if there is no digit, or no other character after the digits.
[[nodiscard]] std::optional<uint64> TakeNumber(std::string_view* text);

/// Advances `text` past blanks and tabs.
void SkipBlanks(std::string_view* text);

/// Takes the next line, without its end; nothing if it is not ended.
[[nodiscard]] std::optional<std::string_view> TakeLine(std::string_view* text);

/// The number that follows `key` and blanks where a line begins with it.
/// @param key  with what separates it from the number, so that it is not the beginning of another
[[nodiscard]] std::optional<uint64> NumberAfter(std::string_view text, std::string_view key);

/// The number that the text begins with, after blanks: files that hold one figure, or "max" or "unlimited" for none.
[[nodiscard]] std::optional<uint64> FirstNumber(std::string_view text);

} // namespace kits
