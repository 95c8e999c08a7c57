// SPDX-License-Identifier: MIT
#include "src/app/UptimeText.h"

#include "src/support/Tr.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <limits>

namespace {

constexpr bigtime_t kSecond = 1'000'000;

// Places of the columns, counted from the start of the line, including the newline before it.
constexpr size_t kFirstColumn = 35;
constexpr size_t kWideColumn = 38;

/// The most bytes that PrintTimeInterval() writes, with the zero.
constexpr size_t kLongestInterval = 96;

void PadTo(std::string& text, size_t lineStart, size_t width)
{
    text.resize(std::max(text.size(), lineStart + width), ' ');
}

std::string TimeInterval(int32 seconds)
{
    struct Unit {
        int32 seconds;
        const char* one;
        const char* many;
    };
    static constexpr Unit kUnits[] = {
        {29'030'400, TrLater("one year "), TrLater("%1 years ")},
        {2'419'200, TrLater("one month "), TrLater("%1 months ")},
        {604'800, TrLater("one week "), TrLater("%1 weeks ")},
        {86'400, TrLater("one day "), TrLater("%1 days ")},
    };
    std::string text;
    for (const Unit& unit : kUnits) {
        const int32 count = seconds / unit.seconds;
        seconds %= unit.seconds;
        if (count != 0)
            text += kits::Filled(Tr(count == 1 ? unit.one : unit.many), {std::to_string(count)});
    }
    std::array<char, 48> rest{};
    std::snprintf(rest.data(), rest.size(), "%02d:%02d:%02d", seconds / 3600, seconds % 3600 / 60, seconds % 3600 % 60);
    return text + rest.data();
}

void AddInterval(std::string& text, int64 seconds)
{
    text += TimeInterval(static_cast<int32>(std::clamp<int64>(seconds, 0, std::numeric_limits<int32>::max())));
}

/// For example "Thu Jan  1 00:00:00 1970", without a newline.
void AddDate(std::string& text, int64 seconds)
{
    const std::time_t time = seconds;
    std::tm local{};
    std::array<char, 64> date{};
    if (localtime_r(&time, &local) != nullptr) {
        // The format of asctime, whatever the locale, also for years for which that has no room.
        static constexpr const char* kDays[] = {TrLater("Sun"), TrLater("Mon"), TrLater("Tue"), TrLater("Wed"),
                                                TrLater("Thu"), TrLater("Fri"), TrLater("Sat")};
        static constexpr const char* kMonths[] = {TrLater("Jan"), TrLater("Feb"), TrLater("Mar"), TrLater("Apr"),
                                                  TrLater("May"), TrLater("Jun"), TrLater("Jul"), TrLater("Aug"),
                                                  TrLater("Sep"), TrLater("Oct"), TrLater("Nov"), TrLater("Dec")};
        std::snprintf(date.data(), date.size(), "%s %s%3d %02d:%02d:%02d %lld", Tr(kDays[local.tm_wday]),
                      Tr(kMonths[local.tm_mon]), local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
                      1900LL + local.tm_year);
    }
    text += date.data();
}

} // namespace

char* PrintTimeInterval(char* out, int32 seconds)
{
    const std::string interval = TimeInterval(seconds).substr(0, kLongestInterval - 1);
    char* const end = std::copy(interval.begin(), interval.end(), out);
    *end = '\0';
    return end;
}

std::string UptimeText(const UptimeFigures& figures)
{
    std::string text = Tr("It's ");
    AddDate(text, figures.wallClock);
    text += '.';
    PadTo(text, 0, kFirstColumn);
    text += '\t';
    text += Tr("Up since: ");
    AddDate(text, figures.wallClock - figures.uptime / kSecond);
    text += '.';

    size_t line = text.size();
    text += '\n';
    text += Tr("Current uptime: ");
    AddInterval(text, figures.uptime / kSecond);
    PadTo(text, line, kWideColumn);
    text += '\t';
    text += Tr("Total uptime: ");
    AddInterval(text, figures.total / kSecond);

    const int32 boots = std::max<int32>(figures.boots, 1);
    line = text.size();
    text += '\n';
    text += Tr("Average uptime: ");
    AddInterval(text, figures.total / kSecond / boots);
    PadTo(text, line, kWideColumn);
    text += '\t';
    text += Tr("Number of reboots: ") + std::to_string(boots);

    text += "\n\n";
    text += Tr("Top 10 uptimes:");
    for (size_t place = 0; place < UptimeTable::kPlaces; ++place) {
        const UptimeEntry& entry = figures.table.At(place);
        line = text.size();
        text += place + 1 < 10 ? "\n0" : "\n";
        text += std::to_string(place + 1) + ":\t";
        if (entry.uptime == 0) {
            text += Tr("n/a");
            continue;
        }
        AddInterval(text, entry.uptime / kSecond);
        PadTo(text, line, kFirstColumn);
        text += " \t";
        text += Tr("Booted at ");
        AddDate(text, entry.bootTime / kSecond);
    }
    return text;
}
