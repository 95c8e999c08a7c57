// SPDX-License-Identifier: MIT
#pragma once

struct CommandLine;

/// Sends the running application the orders of the command line (`--set-delay`, `--set-history`, `--quit`), without a
/// window, and waits until it has handled them. Reports errors on stderr.
/// @return the exit status: 0 if the application has handled all of them, 1 if there is none or it does not answer
int RunTellCommand(const CommandLine& line);
