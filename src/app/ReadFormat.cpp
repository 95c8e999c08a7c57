// SPDX-License-Identifier: MIT
#include "src/app/ReadFormat.h"

#include "kits/support/Utf8.h"
#include "src/sampling/ValueProvider.h"
#include "src/support/FixedPoint.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace {

void AddString(std::string& json, std::string_view text)
{
    json += '"';
    while (!text.empty()) {
        const size_t length = kits::Utf8Length(text);
        const char c = text[0];
        if (length == 0) {
            json += "\xef\xbf\xbd";
        } else if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> escape;
            std::snprintf(escape.data(), escape.size(), "\\u%04x", c);
            json += escape.data();
        } else {
            json += text.substr(0, length);
        }
        text.remove_prefix(std::max<size_t>(length, 1));
    }
    json += '"';
}

/// Returns how many columns the text takes on a terminal; names and captions contain no wide characters.
size_t Columns(std::string_view text)
{
    return std::count_if(
        text.begin(), text.end(), [](char c) { return (c & 0xc0) != 0x80; });
}

void AddLeft(std::string& row, std::string_view text, size_t width)
{
    row += text;
    row.append(width - std::min(width, Columns(text)), ' ');
}

void AddRight(std::string& row, std::string_view text, size_t width)
{
    row.append(width - std::min(width, Columns(text)), ' ');
    row += text;
}

} // namespace

std::string ReadingsAsJson(bigtime_t time, const std::vector<Reading>& readings)
{
    std::string json = "{\"time_us\": " + std::to_string(time) + ", \"sources\": [";
    const char* separator = "";
    for (const Reading& reading : readings) {
        json += separator;
        separator = ", ";
        json += "{\"target\": " + std::to_string(reading.target) + ", \"flags\": " + std::to_string(reading.flags);
        json += ", \"name\": ";
        AddString(json, reading.name);
        json += ", \"fraction\": " + (std::isfinite(reading.fraction) ? SixDigits(reading.fraction) : "null");
        json += ", \"caption\": ";
        AddString(json, reading.caption);
        json += '}';
    }
    return json + "]}\n";
}

std::string ReadingsAsTable(const std::vector<Reading>& readings)
{
    constexpr std::string_view kHeadings[] = {"Source", "Share", "Value"};
    size_t nameWidth = kHeadings[0].size();
    size_t captionWidth = kHeadings[2].size();
    for (const Reading& reading : readings) {
        if (reading.flags == 0) {
            nameWidth = std::max(nameWidth, Columns(reading.name));
            captionWidth = std::max(captionWidth, Columns(reading.caption));
        }
    }

    std::string table;
    auto addRow = [&](std::string_view name, std::string_view share, std::string_view caption) {
        AddLeft(table, name, nameWidth + 2);
        AddRight(table, share, 8);
        AddRight(table, caption, captionWidth + 2);
        table += '\n';
    };
    addRow(kHeadings[0], kHeadings[1], kHeadings[2]);
    for (const Reading& reading : readings) {
        if (reading.flags == 0) {
            std::array<char, ValueProvider::kValueStringLength> share;
            ValueProvider::PrintPercent(share.data(), reading.fraction);
            addRow(reading.name, share.data(), reading.caption);
        }
    }
    return table;
}
