// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/SettingsDesktop.h"

namespace kits {

/// The background of XFCE, read and set by xfconf-query. Each monitor and workspace has settings of its own; painting
/// changes all.
class XfceDesktop : public SettingsDesktop {
public:
    /// @param screen  the X server's name of the main monitor
    explicit XfceDesktop(std::string screen = "");

    const char* Name() const override { return "xfce"; }
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
    std::string ShownWorkspace(const Settings& settings) const;

    const std::string fScreen;
    Tool fMonitor;
};

} // namespace kits
