// SPDX-License-Identifier: MIT
#include "src/chart/ChartExport.h"

#include "kits/application/Field.h"
#include "src/chart/ChartHistory.h"
#include "src/support/FixedPoint.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace {

/// 9999-12-31T23:59:59.999999Z
constexpr bigtime_t kLastMoment = 253402300799999999;

/// Bytes; with the extension it fits into any file system's names.
constexpr size_t kLongestName = 100;

std::string Quoted(const std::string& field)
{
    if (field.find_first_of(",\"\r\n") == std::string::npos)
        return field;
    std::string quoted = "\"";
    for (const char c : field)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

} // namespace

std::string IsoTime(bigtime_t time)
{
    using namespace std::chrono;
    const microseconds moment(std::clamp<bigtime_t>(time, 0, kLastMoment));
    const auto day = duration_cast<days>(moment);
    const year_month_day date{sys_days(day)};
    const auto rest = duration_cast<milliseconds>(moment - day).count();
    char text[64];
    std::snprintf(text, sizeof(text), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(rest / 3600000), static_cast<int>(rest / 60000 % 60),
                  static_cast<int>(rest / 1000 % 60), static_cast<int>(rest % 1000));
    return text;
}

std::string ValuesAsCsv(const ChartHistory& history, const std::vector<std::string>& names, bigtime_t toWall)
{
    std::string table = "time";
    for (const std::string& name : names)
        table += ',' + Quoted(name);
    table += '\n';
    for (int32 i = 0; i < history.CountRows(); i++) {
        const ChartHistory::Row& row = history.RowAt(i);
        table += IsoTime(row.time + toWall);
        for (size_t source = 0; source < names.size(); source++) {
            table += ',';
            if (!std::isnan(row.shares[source]))
                table += SixDigits(static_cast<double>(row.shares[source]));
        }
        table += '\n';
    }
    return table;
}

std::string FileNameOf(const std::string& title, const char* suffix)
{
    std::string name;
    for (const char c : title) {
        const bool isBlank = static_cast<unsigned char>(c) <= ' ' || c == '\x7f';
        const bool isTaken = std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos;
        if (!isBlank)
            name += isTaken ? '-' : c;
        else if (!name.empty() && name.back() != ' ')
            name += ' ';
    }
    name.erase(0, name.find_first_not_of(". "));
    name.resize(kits::CutLength(name, kLongestName));
    const size_t end = name.find_last_not_of(". ");
    name.resize(end == std::string::npos ? 0 : end + 1);
    return (name.empty() ? "Chart" : name) + "." + suffix;
}
