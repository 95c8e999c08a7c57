// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <string>

/// What the program was asked to do by its arguments.
struct CommandLine {
    enum class Action { kOpenWindow, kHelp, kVersion, kSnapshot, kRead, kTell };

    Action action = Action::kOpenWindow;

    /// `--snapshot FILE`: absolute, so that it stays the same file when the working directory changes.
    std::string snapshotFile;
    /// `--after SECONDS` until the picture is taken, microseconds.
    bigtime_t snapshotAfter = 2'000'000;

    /// `--samples N`, at least 1.
    int32 samples = 1;
    /// `--interval SECONDS`, microseconds; 0 for what the user's settings say.
    bigtime_t interval = 0;
    /// `--json`
    bool json = false;

    /// What the running application is told (kTell); several at once go in this order.
    /// `--set-delay SECONDS`, microseconds; 0 when not given.
    bigtime_t setDelay = 0;
    /// `--set-history N`; 0 when not given.
    int16 setHistory = 0;
    /// `--quit`
    bool quit = false;

    /// What is wrong with the arguments, one line without the program's name; empty when nothing is.
    std::string error;
};

/// Reads the arguments; `argv[0]` is the program's name. Options take their value as the next argument or after "=".
/// Of actions that exclude each other `--help` goes first, then `--version`; others are an error.
CommandLine ParseCommandLine(int argc, const char* const* argv);

/// What `--help` prints.
const char* HelpText();
