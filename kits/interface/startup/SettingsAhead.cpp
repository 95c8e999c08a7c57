// SPDX-License-Identifier: MIT
#include "kits/interface/startup/SettingsAhead.h"

#include "kits/interface/platform/DisplayCheck.h"

#include <system_error>
#include <utility>

namespace kits {

SettingsAhead::SettingsAhead()
{
    xcb_connection_t* const server = DisplayCheck::Connection();
    if (server == nullptr)
        return;
    const auto read = [this, server] {
        fSource = FindXSettings(server);
        fSettings = ReadXSettings(server, fSource);
    };
    try {
        fReader = std::jthread(read);
    } catch (const std::system_error&) {
        // No thread is available.
        read();
    }
}

const XSettings& SettingsAhead::Settings()
{
    if (fReader.joinable())
        fReader.join();
    return fSettings;
}

void SettingsAhead::Finish()
{
    Settings();
    XSettingsWatch::Start(fSource, std::move(fSettings));
}

} // namespace kits
