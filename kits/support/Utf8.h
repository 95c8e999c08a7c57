// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace kits {

/// Returns the number of bytes of the character at the start of a text that is not empty; 0 if its bytes are not valid
/// UTF-8: no overlong form, no surrogate, nothing beyond the last character of Unicode.
size_t Utf8Length(std::string_view text);

/// Returns true if the whole text is valid UTF-8.
bool IsUtf8(std::string_view text);

} // namespace kits
