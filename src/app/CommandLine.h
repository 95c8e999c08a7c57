// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <string>

/// The program's command line.
struct CommandLine {
    enum class Action { kOpenWindow, kHelp, kVersion, kSnapshot, kRead, kTell };

    Action action = Action::kOpenWindow;

    /// `--snapshot FILE`: absolute, so that it stays the same file when the working directory changes.
    std::string snapshotFile;
    /// `--after SECONDS` until the picture is taken, microseconds.
    bigtime_t snapshotAfter = 2'000'000;

    /// `--samples N`, at least 1.
    int32 samples = 1;
    /// `--interval SECONDS`, microseconds; 0 for the interval in the user's settings.
    bigtime_t interval = 0;
    /// `--json`
    bool json = false;

    /// Orders to the running application (kTell); several at once are sent in this order. `--set-delay SECONDS`,
    /// microseconds; 0 if not given.
    bigtime_t setDelay = 0;
    /// `--set-history N`; 0 if not given.
    int16 setHistory = 0;
    /// `--quit`
    bool quit = false;

    /// Describes the fault in the arguments, in one line without the program's name; empty if they are valid.
    std::string error;
};

/// Parses the arguments; `argv[0]` is the program's name. The value of an option is the next argument or follows "=".
/// Among actions that exclude each other `--help` takes precedence, then `--version`; other combinations are an error.
CommandLine ParseCommandLine(int argc, const char* const* argv);

/// Returns the output of `--help`.
const char* HelpText();
