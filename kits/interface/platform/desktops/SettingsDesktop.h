// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/DesktopBackend.h"
#include "kits/interface/platform/desktops/Tool.h"

#include <memory>
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

    std::optional<rgb_color> Read() final;
    std::optional<BMessage> Keep() final;
    bool Paint(rgb_color color, const BMessage& kept) final;
    bool Restore(const BMessage& kept) final;
    bool Change(rgb_color color, const BMessage* kept) final;
    bool IsPainted() const final;
    bool OutlivesSession() const final { return true; }
    bool TakeNews() final;

    /// True if the environment answers.
    bool IsThere() const { return Current().has_value(); }

protected:
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

    /// Returns the changes since the last call, as texts that name settings.
    virtual std::vector<std::string> TakeChanges() = 0;
    /// True if such a text names a style, or may name one.
    virtual bool MayBeStyle(const std::string& change) const = 0;

    static const std::string* Find(const Settings& settings, const std::string& key);

private:
    bool HasPlainStyles(const Settings& settings) const;
    bool IsOurs(const Setting& setting) const;

    std::optional<rgb_color> fPainted; ///< by this object
};

/// Returns the text between the quotes of "'text'" or "\"text\"", the two forms in which tools print settings.
std::string Unquoted(const std::string& value);
/// Parses "#rrggbb", "#rrrrggggbbbb" and "rgb(r,g,b)".
std::optional<rgb_color> ParseHexColor(const std::string& text);
/// Returns the colour halfway between two.
rgb_color Between(rgb_color first, rgb_color second);

/// Returns true if light text is easier to read on the colour than dark text.
bool IsDarkColor(rgb_color color);

} // namespace kits
