#pragma once

#include <map>
#include <optional>
#include <string>

namespace kits {

/// A settings file of lines "key=value" in groups "[name]", as desktops keep them. Read once; a plain value.
class IniFile {
public:
    using Group = std::map<std::string, std::string>;

    IniFile() = default;
    /// Of a text. Lines that are no settings are passed over; a key that comes again replaces the one before.
    explicit IniFile(const std::string& text);
    /// Of a file; empty if it cannot be read or has more than a megabyte.
    static IniFile Read(const std::string& path);

    /// @param group  without the outer brackets: "General", or "Containments][1" for a group in a group
    std::optional<std::string> Value(const std::string& group, const std::string& key) const;
    const std::map<std::string, Group>& Groups() const { return fGroups; }

private:
    std::map<std::string, Group> fGroups;
};

} // namespace kits
