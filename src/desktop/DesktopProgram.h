// SPDX-License-Identifier: MIT
#pragma once

/// The main() of qel-desktop: shows charts on the desktop until there are none, or the session ends.
/// @return the exit status: 0; 1 if there is no display or the charts could not be stored; 2 for a wrong option
int RunDesktopProgram(int argc, char** argv);
