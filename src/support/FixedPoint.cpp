// SPDX-License-Identifier: MIT
#include "src/support/FixedPoint.h"

#include <charconv>

namespace {

std::string Digits(double number, std::chars_format format, int precision)
{
    char text[64];
    const auto result = std::to_chars(text, text + sizeof(text), number, format, precision);
    return {text, result.ptr};
}

} // namespace

std::string FixedPoint(double number, int decimals)
{
    return Digits(number, std::chars_format::fixed, decimals);
}

std::string SixDigits(double number)
{
    return Digits(number, std::chars_format::general, 6);
}
