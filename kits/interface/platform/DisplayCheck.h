// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace kits {

/// Checks for a display before the toolkit does, which aborts without one.
class DisplayCheck {
public:
    /// Queries of the environment, which tests replace.
    struct Surroundings {
        /// "" if it is not set.
        std::function<std::string(const char* name)> variable;
        std::function<bool(const std::string& display)> reachesX;
        std::function<bool(const std::string& socket)> reachesWayland;
        /// Returns whether the toolkit has the plug-in for Wayland.
        std::function<bool()> hasWaylandPlugin;
        /// Returns whether the toolkit has a platform of this name, other than X11 and Wayland.
        std::function<bool(const std::string& name)> hasPlatform;
    };

    /// Returns "" if windows can be shown, otherwise one line that says why not.
    /// @param arguments  those of the program; -platform and --platform count
    static std::string WhyNone(const std::vector<std::string>& arguments, const Surroundings& surroundings);
    /// Returns the real ones. The connection to an X server that answered stays open until Done: a server without other
    /// clients would restart when its only client leaves, possibly just when the toolkit connects.
    static Surroundings Real();
    /// The connection that stays open, or null.
    static xcb_connection_t* Connection();
    /// The toolkit is connected.
    static void Done();
};

} // namespace kits
