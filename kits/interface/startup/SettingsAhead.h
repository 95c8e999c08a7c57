// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/x11/XSettings.h"

#include <thread>

namespace kits {

/// Reads the desktop's settings while the toolkit starts, on a thread of its own and over the connection that
/// DisplayCheck has opened. So the first windows have them, and the start does not wait for the X server's answers.
class SettingsAhead {
public:
    /// Starts the thread if there is a connection.
    SettingsAhead();
    SettingsAhead(const SettingsAhead&) = delete;
    SettingsAhead& operator=(const SettingsAhead&) = delete;

    /// Waits for the answers.
    const XSettings& Settings();
    /// Waits for the answers and follows the settings from now on. The toolkit must have started.
    void Finish();

private:
    XSettingsSource fSource;
    XSettings fSettings;
    std::jthread fReader; ///< reads into the members above
};

} // namespace kits
