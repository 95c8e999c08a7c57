#pragma once

#include <algorithm>
#include <string>

#include "kits/kernel/Bounds.h"

/// A text as part of a line on stderr: it stays one line, whatever a file's name holds, and no longer than
/// bounds::kMostInALine bytes and three dots.
inline std::string OneLine(std::string text)
{
    if (text.size() > kits::bounds::kMostInALine)
        text.replace(kits::bounds::kMostInALine, std::string::npos, "...");
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
    return text;
}
