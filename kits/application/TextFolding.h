// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kits {

/// Returns a text in the form for searches: without case in any language, with composed letters, with one blank between
/// words and none at the ends. "Ärger" and "ÄRGER" have the same form. Any thread.
/// @param text  UTF-8; invalid bytes become replacement characters
std::string FoldText(const std::string& text);

} // namespace kits
