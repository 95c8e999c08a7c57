// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kits {

/// A text as it is compared by people who search: without the difference of upper and lower case in any language, with
/// letters in their composed form, and with one blank between words and none at the ends. "Ärger" and "ÄRGER" give the
/// same. Any thread.
/// @param text  UTF-8; bytes that are none become replacement characters
std::string FoldText(const std::string& text);

} // namespace kits
