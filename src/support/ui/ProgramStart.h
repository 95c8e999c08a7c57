// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class BApplication;

/// Steps that both programs take at their start. Each has the program's name as its first argument, for the lines on
/// stderr.

/// Call it before the program does anything that reads the machine.
/// @return false, after one line on stderr with the reason, if KITS_ROOT names a recorded machine that does not exist
bool HasMachineToRead(const char* program);

/// Calls a function with the interface kit ready for windows.
/// @param argv  of main(); the toolkit sees only the program's name
/// @param run   shows the windows and returns the exit status
/// @return that status; 1, after one line on stderr, if there is no machine to read or no display
int RunWithDisplay(const char* program, char** argv, const std::function<int()>& run);

/// Prints on stderr, in one line, that qel and the charts on the desktop cannot find or start each other, the reason,
/// and what will not work therefore. Prints nothing if they can.
/// @param started  the signature of the application that was started; null for a command that only looks for one
/// @return true if they find each other
bool CanReachOthers(const char* program, const char* started);

/// Ends a second start of a program of which each user has one: prints nothing if the user sees that the program runs,
/// otherwise one line on stderr, that it was started on another display or does not answer.
/// @return the exit status: 0, or 1 if a line was printed
int EndSecondStart(const char* program, const BApplication& application);

/// Writes a complete text to stdout: if that fails, on a full disk or with stdout closed, one line on stderr gives the
/// reason.
/// @return the exit status of a program that only prints this: 0, or 1 if it failed
int PrintText(const char* program, const char* text);
