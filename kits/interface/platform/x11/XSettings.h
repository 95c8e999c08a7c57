// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>

struct xcb_connection_t;

namespace kits {

/// The settings that a desktop publishes to all programs through the X server (XSETTINGS): its theme, the resolution of
/// its fonts, the scale of its windows. A plain value.
class XSettings {
public:
    XSettings() = default;
    /// Parses the bytes of the desktop's settings daemon up to the first error. Leaves colours out.
    explicit XSettings(std::span<const uint8> bytes);

    /// Returns a setting by its name, such as "Xft/DPI". Nothing if there is none or it has another type.
    std::optional<int32> Integer(const std::string& name) const;
    /// For example for "Net/ThemeName".
    std::optional<std::string> Text(const std::string& name) const;

private:
    std::map<std::string, int32> fIntegers;
    std::map<std::string, std::string> fTexts;
};

/// The place of a display's settings: atoms, and a window.
struct XSettingsSource {
    uint32 selection = 0; ///< its owner publishes the settings
    uint32 property = 0;  ///< of the owner; contains the settings
    uint32 manager = 0;   ///< the message that announces a new owner
    uint32 owner = 0;     ///< the owner's window; 0: there are no settings
};

/// Queries the server, in three round trips. Any thread that has the connection to itself.
XSettingsSource FindXSettings(xcb_connection_t* server);
XSettings ReadXSettings(xcb_connection_t* server, const XSettingsSource& source);

/// The current settings, even if another daemon takes over. Main thread.
namespace XSettingsWatch {

/// @param settings  as read from the source before
void Start(const XSettingsSource& source, XSettings settings);
void Stop();
/// Returns the newest settings; none if there is no X server or no daemon.
const XSettings& Current();
/// Calls the function after each change, until Stop: together with those added before, in their order, in the event
/// that applies the new scale.
void CallOnChange(std::function<void()> changed);

} // namespace XSettingsWatch

} // namespace kits
