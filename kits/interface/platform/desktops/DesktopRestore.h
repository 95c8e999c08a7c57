// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/DesktopBackend.h"
#include "kits/interface/platform/desktops/DesktopKept.h"

namespace kits {

/// Paints the desktop and restores it. Before the first paint it saves every setting that will change, in a file
/// (DesktopKept), so that the next program can restore the desktop if this one is killed. Of the thread of
/// DesktopWatch.
class DesktopRestore {
public:
    /// @param backend  must outlive this
    explicit DesktopRestore(DesktopBackend& backend)
        : fBackend(backend)
    {
    }

    /// True while the desktop has settings of ours, which Restore takes back.
    bool IsPainted() const { return fPainted.has_value(); }

    /// Shows a colour. Does nothing if the desktop could not be restored, or if another program of the user has
    /// painted.
    /// @param permanent  false: does nothing either if the paint would outlive the session
    void Paint(rgb_color color, bool permanent);
    /// Sets the colour for good, in place of the settings from before.
    void Change(rgb_color color);
    /// Restores the settings from before the first paint. Those that cannot be restored yet stay in the file.
    void Restore();
    /// Restores what a killed program left painted.
    /// @return false if something is left
    bool RestoreLeft();
    /// Restores what nobody else has changed, once, and keeps nothing: after another program has set the desktop.
    void GiveUp();

private:
    bool Keep();
    void ForgetPainted();

    DesktopBackend& fBackend;
    std::optional<BMessage> fPainted; ///< the settings to restore, while the desktop is painted
    DesktopKept fKept;
};

} // namespace kits
