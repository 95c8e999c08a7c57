// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace kits {

/// Looks whether there is a display before the toolkit does, which aborts without one.
class DisplayCheck {
public:
    /// What is asked of the surroundings; replaced by tests.
    struct Surroundings {
        /// "" when it is not set.
        std::function<std::string(const char* name)> variable;
        std::function<bool(const std::string& display)> reachesX;
        std::function<bool(const std::string& socket)> reachesWayland;
        /// Whether the toolkit has the plug-in for Wayland.
        std::function<bool()> hasWaylandPlugin;
        /// Whether the toolkit has a platform of this name, which is neither X11 nor Wayland.
        std::function<bool(const std::string& name)> hasPlatform;
    };

    /// "" when windows can be shown, else one line that says why not.
    /// @param arguments  those of the program; -platform and --platform count
    static std::string WhyNone(const std::vector<std::string>& arguments, const Surroundings& surroundings);
    /// The real ones. The connection to an X server that answered stays open until Done: a server without other clients
    /// would start anew when the only one leaves, and the toolkit could come just then.
    static Surroundings Real();
    /// The connection that stays open; null when there is none.
    static xcb_connection_t* Connection();
    /// The toolkit is connected.
    static void Done();
};

} // namespace kits
