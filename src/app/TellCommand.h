// SPDX-License-Identifier: MIT
#pragma once

struct CommandLine;

/// Tells the running application what the arguments say (`--set-delay`, `--set-history`, `--quit`), without a window,
/// and waits until it has been heard. What is wrong is said on stderr.
/// @return the exit status: 0 when the application has taken all of it, 1 if there is none or it does not answer
int RunTellCommand(const CommandLine& line);
