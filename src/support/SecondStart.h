// SPDX-License-Identifier: MIT
#pragma once

class BApplication;

/// Ends a second start of a program of which each user has one: prints nothing if the user sees that the program runs,
/// otherwise one line on stderr, that it was started on another display or does not answer.
/// @param program  its name, for the line
/// @return the exit status: 0, or 1 if a line was printed
int EndSecondStart(const BApplication& application, const char* program);
