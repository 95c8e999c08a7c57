// SPDX-License-Identifier: MIT
#pragma once

/// The whole program, but for `main`.
/// @return the exit status: 0, 1 when something failed, 2 when an argument is wrong
int RunProgram(int argc, char** argv);
