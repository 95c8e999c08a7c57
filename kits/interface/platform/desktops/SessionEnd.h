// SPDX-License-Identifier: MIT
#pragma once

namespace kits::SessionEnd {

/// Has the end of the session manager's connection count as a request to quit (SIGTERM), once. Without this the library
/// that the toolkit talks to session managers with ends the process, by a signal or an exit, and nothing is saved. Some
/// session managers close the connection as soon as they have told a program to quit, while it still writes to it.
///
/// That of LXQt has no such connections. It is on the session's bus as long as the session lasts; when it leaves the
/// bus that counts as a request to quit, too. Otherwise the loss of the screen, soon after, would be the first sign.
///
/// Writing to any connection whose other end is gone fails from here on and sends no signal. After the toolkit's
/// application object is made. Main thread.
void Watch();

} // namespace kits::SessionEnd
