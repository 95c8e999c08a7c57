// SPDX-License-Identifier: MIT
#pragma once

/// Called by a program before it does anything that reads the machine.
/// @param program  its name, for the line on stderr
/// @return false, after one line on stderr that says why, if KITS_ROOT names a recorded machine that is not there
bool HasMachineToRead(const char* program);
