// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace kits {

class XSettings;

/// The scale at login, in variables that MATE's settings daemon gives to all programs of its session: QT_SCALE_FACTOR,
/// the factor of its windows, and QT_FONT_DPI, the resolution of its fonts. The variables keep their values until the
/// next login, while the X server's settings change with the user's choice, and the toolkit ignores those settings if
/// it sees the variables. As long as an object of this class exists, it hides the variables from the toolkit, in the
/// environment of the process. Programs that are started afterwards see them again.
class LoginScale {
public:
    /// Returns true if the environment has such variables and the session is MATE's. Pure, except for the environment.
    static bool IsInEnvironment();

    /// Hides the variables if IsInEnvironment() and the settings contain a scale that replaces them; otherwise they
    /// stay. If a factor is no integer, or any other of the toolkit's variables for scales is set, that is the user's
    /// own wish: then nothing is hidden.
    explicit LoginScale(const XSettings& settings);
    ~LoginScale();
    LoginScale(const LoginScale&) = delete;
    LoginScale& operator=(const LoginScale&) = delete;

private:
    std::vector<char*> fHidden; ///< entries of the environment
};

} // namespace kits
