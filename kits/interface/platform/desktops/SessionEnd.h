// SPDX-License-Identifier: MIT
#pragma once

namespace kits::SessionEnd {

/// Turns the end of the session manager's connection into a request to quit (SIGTERM), once. Otherwise the toolkit's
/// library for session managers ends the process, by a signal or an exit, and nothing is saved. Some session managers
/// close the connection as soon as they have asked a program to quit, while the program still writes to it.
///
/// LXQt's session manager has no such connections. It is on the session's bus as long as the session lasts; its leaving
/// the bus is a request to quit, too. Otherwise the loss of the screen, soon after, would be the first sign.
///
/// From here on, writing to a connection whose other end is gone fails without a signal. Call it after the toolkit's
/// application object is made. Main thread.
void Watch();

} // namespace kits::SessionEnd
