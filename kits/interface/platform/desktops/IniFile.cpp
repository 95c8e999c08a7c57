// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/IniFile.h"

#include "kits/kernel/Bounds.h"
#include "kits/storage/ReadSmallFile.h"

#include <cctype>
#include <sstream>
#include <string_view>

namespace kits {

namespace {

std::string Trimmed(const std::string& text)
{
    const size_t first = text.find_first_not_of(" \t\r");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string Unescaped(const std::string& text)
{
    std::string plain;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            plain += text[i];
            continue;
        }
        const char next = text[++i];
        plain += next == 's' ? ' ' : next == 't' ? '\t' : next == 'n' ? '\n' : next == 'r' ? '\r' : next;
    }
    return plain;
}

int HexDigit(char digit)
{
    return digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10;
}

/// @param high  the first half of a surrogate pair that still lacks its second one; 0 for none
void AppendUnit(std::string& text, unsigned unit, unsigned& high)
{
    if (unit >= 0xd800 && unit < 0xdc00) {
        high = unit;
        return;
    }
    const bool isSecond = unit >= 0xdc00 && unit < 0xe000;
    if (isSecond && high == 0)
        return;
    const unsigned sign = isSecond ? 0x10000 + ((high - 0xd800) << 10) + (unit - 0xdc00) : unit;
    high = 0;
    const auto append = [&text](unsigned byte) { text += static_cast<char>(byte); };
    const auto follow = [&](int shift) { append(0x80 | (sign >> shift & 0x3f)); };
    if (sign < 0x80) {
        append(sign);
    } else if (sign < 0x800) {
        append(0xc0 | sign >> 6);
        follow(0);
    } else if (sign < 0x10000) {
        append(0xe0 | sign >> 12);
        follow(6);
        follow(0);
    } else {
        append(0xf0 | sign >> 18);
        follow(12);
        follow(6);
        follow(0);
    }
}

} // namespace

IniFile::IniFile(const std::string& text, Values values)
{
    std::istringstream lines(text);
    std::string group;
    for (std::string line; std::getline(lines, line);) {
        line = Trimmed(line);
        if (line.size() > 2 && line.front() == '[' && line.back() == ']') {
            group = line.substr(1, line.size() - 2);
            continue;
        }
        const size_t sign = line.find('=');
        if (sign == std::string::npos || sign == 0 || line.front() == '#')
            continue;
        std::string key = Trimmed(line.substr(0, sign));
        // "Key[$i]" is a key that users may not change.
        if (const size_t options = key.find("[$"); options != std::string::npos)
            key.erase(options);
        const std::string value = Trimmed(line.substr(sign + 1));
        fGroups[group][key] = values == Values::kUnescaped ? Unescaped(value) : value;
    }
}

IniFile IniFile::Read(const std::string& path, Values values)
{
    const std::optional<std::string> text = TextOf(path);
    return text ? IniFile(*text, values) : IniFile();
}

std::optional<std::string> IniFile::TextOf(const std::string& path)
{
    return ReadSmallFile(path, bounds::kMostForeignSettings);
}

std::optional<std::string> IniFile::Value(const std::string& group, const std::string& key) const
{
    const auto found = fGroups.find(group);
    if (found == fGroups.end())
        return std::nullopt;
    const auto value = found->second.find(key);
    return value != found->second.end() ? std::optional(value->second) : std::nullopt;
}

std::string UnescapedByQt(const std::string& written)
{
    std::string plain;
    unsigned high = 0;
    for (size_t i = 0; i < written.size(); i++) {
        if (written[i] == '"')
            continue;
        if (written[i] != '\\' || i + 1 == written.size()) {
            plain += written[i];
            continue;
        }
        const char next = written[++i];
        if (next == 'x') {
            unsigned unit = 0;
            for (; i + 1 < written.size() && std::isxdigit(static_cast<unsigned char>(written[i + 1])) != 0; i++)
                unit = (unit * 16 + static_cast<unsigned>(HexDigit(written[i + 1]))) & 0xffff;
            AppendUnit(plain, unit, high);
            continue;
        }
        constexpr std::string_view kNames = "abfnrtv0";
        constexpr std::string_view kMeanings("\a\b\f\n\r\t\v\0", kNames.size());
        const size_t name = kNames.find(next);
        plain += name != kNames.npos ? kMeanings[name] : next;
    }
    return plain;
}

} // namespace kits
