// SPDX-License-Identifier: MIT
#include "kits/kernel/record/ProcStat.h"

#include "kits/kernel/ProcText.h"
#include "kits/kernel/record/ProcStatLine.h"

namespace kits {

namespace {

constexpr std::string_view kLineStart = "cpu";
constexpr int kFirstFields = 4;
constexpr int kAllFields = 8;
constexpr bool kIsActive[kAllFields] = {true, true, true, false, false, true, true, true};

uint64 AddHeld(uint64 a, uint64 b)
{
    uint64 sum;
    return __builtin_add_overflow(a, b, &sum) ? UINT64_MAX : sum;
}

/// Parses a line including its end; "cpu" is already removed.
bool ParseLine(std::string_view line, ProcessorTime* time)
{
    const auto index = TakeNumber(&line);
    if (!index.has_value() || *index > INT32_MAX)
        return false;
    uint64 ticks = 0;
    int count = 0;
    for (; count < kAllFields; ++count) {
        SkipBlanks(&line);
        const auto value = TakeNumber(&line);
        if (!value.has_value())
            break;
        if (kIsActive[count])
            ticks = AddHeld(ticks, *value);
    }
    if (count < kFirstFields || (line.front() != ' ' && line.front() != '\n'))
        return false;
    *time = {static_cast<int32>(*index), ticks};
    return true;
}

} // namespace

size_t ParseProcessorTimes(std::string_view text, std::span<ProcessorTime> times, bool* isWhole)
{
    const std::string_view whole = text;
    size_t count = 0;
    while (count < times.size()) {
        if (const char* next = TakeUsualLine(whole, text.data(), &times[count])) {
            ++count;
            text.remove_prefix(static_cast<size_t>(next - text.data()));
            continue;
        }
        const size_t end = text.find('\n');
        const bool isCut = end == std::string_view::npos;
        if (!text.starts_with(kLineStart)) {
            if (isWhole != nullptr)
                *isWhole = !isCut || text.size() >= kLineStart.size();
            return count;
        }
        if (isCut)
            break;
        if (ParseLine(text.substr(kLineStart.size(), end + 1 - kLineStart.size()), &times[count]))
            ++count;
        text.remove_prefix(end + 1);
    }
    if (isWhole != nullptr)
        *isWhole = count == times.size();
    return count;
}

} // namespace kits
