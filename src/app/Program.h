// SPDX-License-Identifier: MIT
#pragma once

/// The whole program, except for `main`.
/// @return the exit status: 0, 1 if something failed, 2 if an argument is wrong
int RunProgram(int argc, char** argv);
