// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>

namespace kits {

/// A settings file of lines "key=value" in groups "[name]", as desktops use them. Read once; a plain value.
class IniFile {
public:
    using Group = std::map<std::string, std::string>;

    IniFile() = default;
    /// How values are read.
    enum class Values {
        kUnescaped, ///< without the escapes of KDE's files
        kAsWritten
    };

    /// Of a text. Skips lines that are no settings; the last of several equal keys counts.
    explicit IniFile(const std::string& text, Values values = Values::kUnescaped);
    /// Reads a file; empty if it has no text, see TextOf.
    static IniFile Read(const std::string& path, Values values = Values::kUnescaped);
    /// The text of a file; nothing if it cannot be read, is no regular file, or has more than
    /// bounds::kMostForeignSettings bytes. Never waits for another program, as opening a pipe in place of the file
    /// would.
    static std::optional<std::string> TextOf(const std::string& path);

    /// @param group  without the outer brackets: "General", or "Containments][1" for a group in a group
    std::optional<std::string> Value(const std::string& group, const std::string& key) const;
    const std::map<std::string, Group>& Groups() const { return fGroups; }

private:
    std::map<std::string, Group> fGroups;
};

/// The text, in UTF-8, of a value as it is written in Qt's settings files: without quotes and escapes.
std::string UnescapedByQt(const std::string& written);

} // namespace kits
