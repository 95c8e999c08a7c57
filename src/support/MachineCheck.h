// SPDX-License-Identifier: MIT
#pragma once

/// Call it before the program does anything that reads the machine.
/// @param program  its name, for the line on stderr
/// @return false, after one line on stderr with the reason, if KITS_ROOT names a recorded machine that does not exist
bool HasMachineToRead(const char* program);
