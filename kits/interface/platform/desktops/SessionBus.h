// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// The bus of the user's session, on which the toolkit looks for assistive technology. Without a bus the toolkit's
/// library tries to start one, with a program that is missing as well. For that it forks the process while the start
/// waits, and every page that is written to afterwards is copied.
class SessionBus {
public:
    /// True if there is a bus, by its address or at its usual place, or a program that starts one.
    static bool CanBeReached();

    /// Without a bus, keeps the toolkit from looking for one. Make it before the toolkit's application object, while no
    /// other thread runs.
    SessionBus();
    /// Restores the environment, for the programs that this one starts.
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

private:
    bool fIsTold;
};

} // namespace kits
