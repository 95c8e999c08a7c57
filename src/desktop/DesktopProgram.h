// SPDX-License-Identifier: MIT
#pragma once

/// What main() of qel-desktop does: shows charts on the desktop until there are none, or the session ends.
/// @return the exit status: 0; 1 when there is no display or what is shown could not be stored; 2 for a wrong option
int RunDesktopProgram(int argc, char** argv);
