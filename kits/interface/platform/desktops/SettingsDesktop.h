// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/DesktopBackend.h"
#include "kits/interface/platform/desktops/Tool.h"

#include <list>
#include <optional>
#include <string>
#include <vector>

namespace kits {

/// A desktop environment that draws its background according to its settings. To paint, this class keeps every setting
/// that it is going to change, then sets the *styles* to the values that mean a plain colour, and the *colours* to that
/// colour.
///
/// It restores a setting if the setting still has the painted value. A style that somebody else has set means that the
/// desktop is not ours any more.
class SettingsDesktop : public DesktopBackend {
public:
    enum class Kind {
        kRead, ///< never changed, but needed for the colour
        kStyle,
        kColor
    };
    struct Setting {
        std::string key;
        Kind kind;
        std::optional<std::string> value; ///< in the tool's form; the default if it is not set
        bool isSet = false;               ///< false: it follows the defaults
    };
    using Settings = std::vector<Setting>;

    bool IsThere() const final { return Current().has_value(); }
    std::optional<rgb_color> Read() final;
    std::optional<BMessage> Keep() final;
    bool Paint(rgb_color color, const BMessage& kept) final;
    bool Restore(const BMessage& kept) final;
    bool Change(rgb_color color, const BMessage* kept) final;
    bool IsPainted() const final;
    bool OutlivesSession() const final { return true; }
    std::vector<int> Descriptors() const override;
    bool TakeNews() override;

protected:
    /// Starts tools of the desktop that print a line for each change of its settings.
    explicit SettingsDesktop(const std::vector<std::vector<std::string>>& monitors = {});

    /// All settings that matter, also unset ones; colours first. Nothing if they cannot be read.
    virtual std::optional<Settings> Current() const = 0;
    virtual bool Set(const std::string& key, const std::string& value) = 0;
    virtual bool Unset(const std::string& key) = 0;
    /// Returns the value of a style that means a plain colour.
    virtual std::string PlainStyle(const std::string& key) const = 0;
    virtual std::string FormatColor(rgb_color color) const = 0;
    virtual std::optional<rgb_color> ParseColor(const std::string& value) const = 0;
    /// The colour that the settings show.
    virtual std::optional<rgb_color> Shown(const Settings& settings) const = 0;
    /// True if the line of a monitor reports a setting that matters.
    /// @param isPainted  if true, only styles matter, because we change the colours ourselves
    virtual bool IsNews(const std::string& /*line*/, bool /*isPainted*/) const { return true; }

    /// Returns the value of a setting; nothing if it has none.
    static std::optional<std::string> Find(const Settings& settings, const std::string& key);
    /// Returns the average of a picture or, without one, the colour behind it.
    /// @param picture  "" for none
    /// @param other    the other end of a gradient, if the background is one
    static std::optional<rgb_color> Average(const std::string& picture, std::optional<rgb_color> color,
                                            std::optional<rgb_color> other);

private:
    bool IsOurs(const Setting& setting) const;

    std::list<Tool> fMonitors;
    std::optional<rgb_color> fPainted; ///< by this object
};

/// Returns the text between the quotes of "'text'" or "\"text\"", the two forms in which tools print settings.
std::string Unquoted(const std::string& value);
/// Parses "#rrggbb", "#rrrrggggbbbb" and "rgb(r,g,b)".
std::optional<rgb_color> ParseHexColor(const std::string& text);
/// Parses "r,g,b" at the start of a text.
/// @param end  receives the index behind it
std::optional<rgb_color> ParseDecimalColor(const std::string& text, size_t* end);

/// Returns true if light text is easier to read on the colour than dark text.
bool IsDarkColor(rgb_color color);

} // namespace kits
