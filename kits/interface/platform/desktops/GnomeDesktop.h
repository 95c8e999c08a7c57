// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/SettingsDesktop.h"

namespace kits {

/// The background of GNOME and of the desktops derived from it. Their tools read and write it: gsettings handles the
/// values, and dconf reports which of them the user has set. Without dconf every value counts as set.
class GnomeDesktop : public SettingsDesktop {
public:
    /// The names of the settings of one of these desktops. Values are in the form in which gsettings prints them.
    struct Family {
        const char* name;
        const char* schema;
        const char* path; ///< of the schema, in dconf
        const char* picture;
        const char* darkPicture;  ///< null if dark windows have no picture of their own
        const char* pictureStyle; ///< with the value noPicture, this setting hides the picture
        const char* noPicture;
    };
    static const Family kGnome, kCinnamon, kMate;

    explicit GnomeDesktop(const Family& family = kGnome);

    const char* Name() const override { return fFamily.name; }
    std::vector<int> Descriptors() const override;

protected:
    std::optional<Settings> Current() const override;
    bool Set(const std::string& key, const std::string& value) override;
    bool Unset(const std::string& key) override;
    std::string PlainStyle(const std::string& key) const override;
    std::string FormatColor(rgb_color color) const override;
    std::optional<rgb_color> ParseColor(const std::string& value) const override;
    std::optional<rgb_color> Shown(const Settings& settings) const override;
    std::vector<std::string> TakeChanges() override;
    bool MayBeStyle(const std::string& change) const override;

private:
    const Family& fFamily;
    Tool fMonitor;
    std::optional<Tool> fSchemeMonitor; ///< light and dark have pictures of their own
};

} // namespace kits
