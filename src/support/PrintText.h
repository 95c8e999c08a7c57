// SPDX-License-Identifier: MIT
#pragma once

/// Writes a complete text to stdout: if that fails, on a full disk or with stdout closed, one line on stderr gives the
/// reason.
/// @param program  its name, for that line
/// @return the exit status of a program that only prints this: 0, or 1 if it failed
int PrintText(const char* program, const char* text);
