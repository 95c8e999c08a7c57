// SPDX-License-Identifier: MIT
#pragma once

#include "src/app/CommandLine.h"

/// `--read`: takes samples with the sampler that the window uses and prints every source of this machine. Needs no
/// display; reads the user's settings and writes nothing.
/// @return the exit status: 0, or 1 if the output cannot be written
int RunReadCommand(const CommandLine& line);
