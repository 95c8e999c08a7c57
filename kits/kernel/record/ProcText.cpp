// SPDX-License-Identifier: MIT
#include "kits/kernel/ProcText.h"

namespace kits {

std::optional<uint64> TakeNumber(std::string_view* text)
{
    const char* const begin = text->data();
    const char* const end = begin + text->size();
    const char* next = begin;
    uint64 number = 0;
    for (; next != end && *next >= '0' && *next <= '9'; ++next)
        if (__builtin_mul_overflow(number, uint64{10}, &number) ||
            __builtin_add_overflow(number, static_cast<uint64>(*next - '0'), &number))
            number = UINT64_MAX;
    if (next == begin || next == end)
        return std::nullopt;
    text->remove_prefix(static_cast<size_t>(next - begin));
    return number;
}

void SkipBlanks(std::string_view* text)
{
    while (!text->empty() && (text->front() == ' ' || text->front() == '\t'))
        text->remove_prefix(1);
}

std::optional<std::string_view> TakeLine(std::string_view* text)
{
    const size_t end = text->find('\n');
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view line = text->substr(0, end);
    text->remove_prefix(end + 1);
    return line;
}

std::optional<uint64> NumberAfter(std::string_view text, std::string_view key)
{
    while (!text.starts_with(key)) {
        const size_t end = text.find('\n');
        if (end == std::string_view::npos)
            return std::nullopt;
        text.remove_prefix(end + 1);
    }
    return FirstNumber(text.substr(key.size()));
}

std::optional<uint64> FirstNumber(std::string_view text)
{
    SkipBlanks(&text);
    return TakeNumber(&text);
}

} // namespace kits
