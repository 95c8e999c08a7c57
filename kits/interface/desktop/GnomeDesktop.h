#pragma once

#include "kits/interface/desktop/SettingsDesktop.h"

namespace kits {

/// The background of GNOME, by its tools: gsettings, and dconf to tell what is set from what is a default. Without
/// dconf everything counts as set.
class GnomeDesktop : public SettingsDesktop {
public:
    GnomeDesktop();

    const char* Name() const override { return "gnome"; }
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
    Tool fMonitor;
    Tool fSchemeMonitor; ///< light and dark have pictures of their own
};

} // namespace kits
