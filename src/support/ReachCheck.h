// SPDX-License-Identifier: MIT
#pragma once

/// Prints on stderr, in one line, that qel and the charts on the desktop cannot find or start each other, the reason,
/// and what will not work therefore. Prints nothing if they can.
/// @param program    its name, for the line
/// @param signature  of the application that was started; null for a command that only looks for one
/// @return true if they find each other
bool CanReachOthers(const char* program, const char* signature);
