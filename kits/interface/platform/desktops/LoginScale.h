// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace kits {

class XSettings;

/// The scale of the login, in variables that MATE's settings daemon gives to all programs of its session:
/// QT_SCALE_FACTOR, the factor of its windows, and QT_FONT_DPI, the resolution of its fonts. The variables keep their
/// values until the next login, while the X server's settings change with the user's choice, and the toolkit ignores
/// those settings where it sees the variables. An object of this class hides the variables from the toolkit, in the
/// environment of the process, as long as it exists. Programs that are started afterwards see them again.
class LoginScale {
public:
    /// True if the environment has such variables and the session is MATE's. Pure, but for the environment.
    static bool IsInEnvironment();

    /// Hides the variables if IsInEnvironment() and the settings tell a scale that replaces them; otherwise they stay.
    /// A factor that is no whole number, or any other of the toolkit's variables for scales, is the user's own wish:
    /// then nothing is hidden.
    explicit LoginScale(const XSettings& settings);
    ~LoginScale();
    LoginScale(const LoginScale&) = delete;
    LoginScale& operator=(const LoginScale&) = delete;

private:
    std::vector<char*> fHidden; ///< entries of the environment
};

} // namespace kits
