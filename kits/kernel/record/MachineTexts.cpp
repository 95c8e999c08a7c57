// SPDX-License-Identifier: MIT
#include "kits/kernel/record/MachineTexts.h"

#include "kits/kernel/ProcText.h"

namespace kits {

namespace {

constexpr std::string_view kPageFaults = "pgfault ";

/// Takes a word that ends with a blank, and the blanks after it.
std::string_view TakeWord(std::string_view* text)
{
    const size_t end = text->find_first_of(" \t");
    if (end == std::string_view::npos)
        return {};
    const std::string_view word = text->substr(0, end);
    text->remove_prefix(end);
    SkipBlanks(text);
    return word;
}

bool HasController(std::string_view list, std::string_view name)
{
    while (!list.empty()) {
        const size_t end = list.find(',');
        if (list.substr(0, end) == name)
            return true;
        list = end == std::string_view::npos ? std::string_view() : list.substr(end + 1);
    }
    return false;
}

} // namespace

MemoryTexts ParseMemInfo(std::string_view text)
{
    return {NumberAfter(text, "MemTotal:"), NumberAfter(text, "MemAvailable:")};
}

std::optional<uint64> ParsePageFaults(std::string_view text, size_t* hint)
{
    const auto isLine = [text](size_t at) {
        return text.substr(at).starts_with(kPageFaults) && (at == 0 || text[at - 1] == '\n');
    };
    size_t at = *hint;
    if (at >= text.size() || !isLine(at)) {
        at = text.find(kPageFaults);
        while (at != std::string_view::npos && !isLine(at))
            at = text.find(kPageFaults, at + 1);
    }
    if (at == std::string_view::npos)
        return std::nullopt;
    *hint = at;
    return FirstNumber(text.substr(at + kPageFaults.size()));
}

std::optional<uint64> ParseThreadCount(std::string_view text)
{
    const size_t stroke = text.find('/');
    if (stroke == std::string_view::npos)
        return std::nullopt;
    text.remove_prefix(stroke + 1);
    return TakeNumber(&text);
}

std::optional<uint64> ParseLargestSemCount(std::string_view text)
{
    if (TakeWord(&text).empty())
        return std::nullopt;
    return TakeNumber(&text);
}

std::optional<uint64> ParseSemCount(std::string_view text)
{
    const auto heading = TakeLine(&text);
    if (!heading.has_value() || heading->find("nsems") == std::string_view::npos)
        return std::nullopt;
    uint64 count = 0;
    while (auto line = TakeLine(&text)) {
        SkipBlanks(&*line);
        TakeWord(&*line);
        TakeWord(&*line);
        TakeWord(&*line);
        if (__builtin_add_overflow(count, TakeNumber(&*line).value_or(0), &count))
            return UINT64_MAX;
    }
    return text.empty() ? std::optional(count) : std::nullopt;
}

std::optional<uint64> ParseHighestProcessor(std::string_view text)
{
    std::optional<uint64> highest;
    while (auto number = TakeNumber(&text)) {
        if (!highest.has_value() || *number > *highest)
            highest = number;
        text.remove_prefix(1);
    }
    return highest;
}

std::optional<PidsGroup> ParsePidsGroup(std::string_view text)
{
    std::optional<PidsGroup> unified;
    while (const auto line = TakeLine(&text)) {
        const size_t first = line->find(':');
        const size_t second = first == std::string_view::npos ? first : line->find(':', first + 1);
        if (second == std::string_view::npos)
            continue;
        const std::string_view controllers = line->substr(first + 1, second - first - 1);
        const std::string_view path = line->substr(second + 1);
        if (!path.starts_with('/') || path.starts_with("/.."))
            continue;
        if (HasController(controllers, "pids"))
            return PidsGroup{false, std::string(path)};
        if (controllers.empty())
            unified = PidsGroup{true, std::string(path)};
    }
    return unified;
}

} // namespace kits
