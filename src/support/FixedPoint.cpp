// SPDX-License-Identifier: MIT
#include "src/support/FixedPoint.h"

#include <charconv>

std::string FixedPoint(double number, int decimals)
{
    char text[64];
    const auto result = std::to_chars(text, text + sizeof(text), number, std::chars_format::fixed, decimals);
    return {text, result.ptr};
}
