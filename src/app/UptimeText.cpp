#include "src/app/UptimeText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <limits>
#include <utility>

namespace {

constexpr bigtime_t kSecond = 1'000'000;

// Places of the columns, counted from the start of the line with the newline before it.
constexpr size_t kFirstColumn = 35;
constexpr size_t kWideColumn = 38;

void PadTo(std::string& text, size_t lineStart, size_t width)
{
    text.resize(std::max(text.size(), lineStart + width), ' ');
}

void AddInterval(std::string& text, int64 seconds)
{
    std::array<char, 96> interval;
    const auto held = std::clamp<int64>(seconds, 0, std::numeric_limits<int32>::max());
    text.append(interval.data(), PrintTimeInterval(interval.data(), static_cast<int32>(held)));
}

/// For example "Thu Jan  1 00:00:00 1970", without a newline.
void AddDate(std::string& text, int64 seconds)
{
    const std::time_t time = seconds;
    std::tm local{};
    std::array<char, 64> date{};
    if (localtime_r(&time, &local) != nullptr) {
        // What asctime writes, whatever the locale, also for years that it has no room for.
        static constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
        static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
        std::snprintf(date.data(), date.size(), "%s %s%3d %02d:%02d:%02d %lld", kDays[local.tm_wday],
                      kMonths[local.tm_mon], local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
                      1900LL + local.tm_year);
    }
    text += date.data();
}

} // namespace

char* PrintTimeInterval(char* out, int32 seconds)
{
    struct Unit {
        int32 seconds;
        const char* one;
        const char* many;
    };
    static constexpr Unit kUnits[] = {
        {29'030'400, "one year ", "%d years "},
        {2'419'200, "one month ", "%d months "},
        {604'800, "one week ", "%d weeks "},
        {86'400, "one day ", "%d days "},
    };
    for (const Unit& unit : kUnits) {
        const int32 count = seconds / unit.seconds;
        seconds %= unit.seconds;
        if (count != 0) {
            out += std::sprintf(out, count == 1 ? unit.one : unit.many, count);
        }
    }
    return out + std::sprintf(out, "%02d:%02d:%02d", seconds / 3600, seconds % 3600 / 60, seconds % 3600 % 60);
}

std::string UptimeText(const UptimeFigures& figures)
{
    std::string text = "It's ";
    AddDate(text, figures.wallClock);
    text += '.';
    PadTo(text, 0, kFirstColumn);
    text += "\tUp since: ";
    AddDate(text, figures.wallClock - figures.uptime / kSecond);
    text += '.';

    size_t line = text.size();
    text += "\nCurrent uptime: ";
    AddInterval(text, figures.uptime / kSecond);
    PadTo(text, line, kWideColumn);
    text += "\tTotal uptime: ";
    AddInterval(text, figures.total / kSecond);

    const int32 boots = std::max<int32>(figures.boots, 1);
    line = text.size();
    text += "\nAverage uptime: ";
    AddInterval(text, figures.total / kSecond / boots);
    PadTo(text, line, kWideColumn);
    text += "\tNumber of reboots: " + std::to_string(boots);

    text += "\n\nTop 10 uptimes:";
    for (size_t place = 0; place < UptimeTable::kPlaces; ++place) {
        const UptimeEntry& entry = figures.table.At(place);
        line = text.size();
        text += place + 1 < 10 ? "\n0" : "\n";
        text += std::to_string(place + 1) + ":\t";
        if (entry.uptime == 0) {
            text += "n/a";
            continue;
        }
        AddInterval(text, entry.uptime / kSecond);
        PadTo(text, line, kFirstColumn);
        text += " \tBooted at ";
        AddDate(text, entry.bootTime / kSecond);
    }
    return text;
}
