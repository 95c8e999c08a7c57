// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Bounds.h"

#include <algorithm>
#include <string>

/// Returns a text as part of a line on stderr: it stays one line, whatever a file's name contains, and no longer than
/// bounds::kMostInALine bytes, whole characters of UTF-8, and three dots.
inline std::string OneLine(std::string text)
{
    if (size_t size = kits::bounds::kMostInALine; text.size() > size) {
        // A character has at most three bytes after its first.
        for (int i = 0; i < 3 && (static_cast<unsigned char>(text[size]) & 0xc0) == 0x80; ++i)
            --size;
        text.replace(size, std::string::npos, "...");
    }
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
    return text;
}
