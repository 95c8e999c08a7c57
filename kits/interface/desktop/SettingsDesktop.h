#pragma once

#include "kits/interface/desktop/DesktopBackend.h"
#include "kits/interface/desktop/Tool.h"

#include <memory>
#include <string>
#include <vector>

namespace kits {

/// A desktop environment, which draws the background as its settings say. What all have in common: to paint, *styles*
/// are set to what means a plain colour, and *colours* to that colour; each setting that is touched is kept before.
///
/// A setting is put back if it still has what was painted. A style that somebody else has set means that the desktop is
/// not ours any more.
class SettingsDesktop : public DesktopBackend {
public:
    enum class Kind {
        kRead, ///< only looked at, to tell the colour
        kStyle,
        kColor
    };
    struct Setting {
        std::string key;
        Kind kind;
        std::optional<std::string> value; ///< as the tool takes it; what holds, also when it is not set
        bool isSet = false;               ///< by somebody; else it follows the defaults
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

    /// Whether the environment answers at all.
    bool IsThere() const { return Current().has_value(); }

protected:
    /// All settings that matter, those that are not set too; colours first. Nothing when they can't be read.
    virtual std::optional<Settings> Current() const = 0;
    virtual bool Set(const std::string& key, const std::string& value) = 0;
    virtual bool Unset(const std::string& key) = 0;
    /// What a style is set to.
    virtual std::string PlainStyle(const std::string& key) const = 0;
    virtual std::string FormatColor(rgb_color color) const = 0;
    virtual std::optional<rgb_color> ParseColor(const std::string& value) const = 0;
    /// The colour that the settings show.
    virtual std::optional<rgb_color> Shown(const Settings& settings) const = 0;

    /// Takes in what has changed since, as texts that name settings.
    virtual std::vector<std::string> TakeChanges() = 0;
    /// Whether a text names a style, or may.
    virtual bool MayBeStyle(const std::string& change) const = 0;

    static const std::string* Find(const Settings& settings, const std::string& key);

private:
    bool HasPlainStyles(const Settings& settings) const;
    bool IsOurs(const Setting& setting) const;

    std::optional<rgb_color> fPainted; ///< by this object
};

/// "'text'" or "\"text\"" as settings are printed: the text.
std::string Unquoted(const std::string& value);
/// Of "#rrggbb", "#rrrrggggbbbb" and "rgb(r,g,b)".
std::optional<rgb_color> ParseHexColor(const std::string& text);
/// The colour halfway between two.
rgb_color Between(rgb_color first, rgb_color second);

/// Whether light text reads better on it than dark.
bool IsDarkColor(rgb_color color);

} // namespace kits
