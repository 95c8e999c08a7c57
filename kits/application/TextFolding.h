// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kits {

/// The form of a text for searches: without case in any language, with composed letters, with
/// one blank between words and none at the ends. "Ärger" and "ÄRGER" give the same. Any
/// thread.
/// @param text  UTF-8; bytes that are none become replacement characters
std::string FoldText(const std::string& text);

} // namespace kits
