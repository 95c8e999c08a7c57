#include "kits/interface/desktop/IniFile.h"

#include <fstream>
#include <sstream>

namespace kits {

namespace {

constexpr size_t kMost = 1024 * 1024;

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

} // namespace

IniFile::IniFile(const std::string& text)
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
        fGroups[group][key] = Unescaped(Trimmed(line.substr(sign + 1)));
    }
}

IniFile IniFile::Read(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(kMost + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<size_t>(file.gcount()));
    return text.size() > kMost ? IniFile() : IniFile(text);
}

std::optional<std::string> IniFile::Value(const std::string& group, const std::string& key) const
{
    const auto found = fGroups.find(group);
    if (found == fGroups.end())
        return std::nullopt;
    const auto value = found->second.find(key);
    return value != found->second.end() ? std::optional(value->second) : std::nullopt;
}

} // namespace kits
