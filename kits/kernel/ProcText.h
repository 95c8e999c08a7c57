// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <optional>
#include <string_view>

namespace kits {

/// Helpers of every parser of the kernel's text files. A file may be cut anywhere, so a number counts only if a
/// character follows it.

/// Returns the number at the beginning of `text`, and advances `text` past it; a number that does not fit gives the
/// largest one. Nothing if there is no digit, or no other character after the digits.
[[nodiscard]] std::optional<uint64> TakeNumber(std::string_view* text);

/// Advances `text` past blanks and tabs.
void SkipBlanks(std::string_view* text);

/// Takes the next line, without its end; nothing if the end is missing.
[[nodiscard]] std::optional<std::string_view> TakeLine(std::string_view* text);

/// The number that follows `key` and blanks where a line begins with it.
/// @param key  including the separator before the number, so that it does not match a longer key
[[nodiscard]] std::optional<uint64> NumberAfter(std::string_view text, std::string_view key);

/// The number at the beginning of the text, after blanks; nothing for "max" or "unlimited".
[[nodiscard]] std::optional<uint64> FirstNumber(std::string_view text);

} // namespace kits
