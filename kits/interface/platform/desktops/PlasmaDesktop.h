// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/FileWatch.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"

namespace kits {

/// The background of KDE's desktop shell, changed by scripts that the shell runs on a call of dbus-send. Each monitor
/// and activity has settings of its own. Painting changes all of them; the colour is that of the current main monitor.
///
/// The shell keeps its settings in memory and in a file. Set() changes both, and reads them back. While no shell runs,
/// at login and at the end of the session, this class reads the file, and KDE's own tool writes it.
class PlasmaDesktop : public SettingsDesktop {
public:
    PlasmaDesktop();

    const char* Name() const override { return "plasma"; }
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
    bool MayBeStyle(const std::string&) const override { return true; }

private:
    FileWatch fFile;
};

} // namespace kits
