#pragma once

#include "kits/kernel/Types.h"

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>

struct xcb_connection_t;

namespace kits {

/// The settings that a desktop tells all programs through the X server (XSETTINGS): its theme, the resolution of its
/// fonts, the scale of its windows. A plain value.
class XSettings {
public:
    XSettings() = default;
    /// Reads what the desktop's settings daemon has written; what is broken ends it. Colours are left out.
    explicit XSettings(std::span<const uint8> bytes);

    /// A setting by its name, such as "Xft/DPI". Nothing when there is none, or one of another type.
    std::optional<int32> Integer(const std::string& name) const;
    /// For example of "Net/ThemeName".
    std::optional<std::string> Text(const std::string& name) const;

private:
    std::map<std::string, int32> fIntegers;
    std::map<std::string, std::string> fTexts;
};

/// Where a display has its settings.
struct XSettingsSource {
    uint32 selection = 0; ///< whose owner has them
    uint32 property = 0;  ///< in which the owner has them
    uint32 manager = 0;   ///< announces a new owner
    uint32 owner = 0;     ///< 0: nobody tells settings
};

/// Asks the server, three times. Any thread that has the connection to itself.
XSettingsSource FindXSettings(xcb_connection_t* server);
XSettings ReadXSettings(xcb_connection_t* server, const XSettingsSource& source);

/// The settings as they change, also when another daemon takes over. Main thread.
namespace XSettingsWatch {

/// @param settings  as read from the source before
void Start(const XSettingsSource& source, XSettings settings);
void Stop();
/// What the desktop says now; nothing where there is no X server or no daemon.
const XSettings& Current();
/// The function is called in a turn of its own after each change, until Stop.
void CallOnChange(std::function<void()> changed);

} // namespace XSettingsWatch

} // namespace kits
