// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// The bus of the user's session, on which the toolkit looks for assistive technology. Where there is none its library
/// tries to start one, with a program that is not there either: it copies the whole process for that, while the start
/// waits, and every page that is written to afterwards is copied as well.
class SessionBus {
public:
    /// Whether one can be found or started: by its address, at its usual place, or by the program that starts one.
    static bool CanBeReached();

    /// When it cannot be reached the toolkit is told that there is none. Before the toolkit's application object is
    /// made, and while no other thread runs.
    SessionBus();
    /// Has the toolkit look, and leaves the environment as it was, for the programs that this one starts.
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

private:
    bool fIsTold;
};

} // namespace kits
