#pragma once

#include <algorithm>
#include <string>

/// A text as part of a line on stderr: it stays one line, whatever a file's name holds.
inline std::string OneLine(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
    return text;
}
