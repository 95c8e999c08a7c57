// SPDX-License-Identifier: MIT
#pragma once

/// Writes a text to stdout, to its end: on a full disk, or with stdout closed, one line on stderr says why it failed.
/// @param program  its name, for that line
/// @return the exit status of a program that only prints this: 0, or 1 if it failed
int PrintText(const char* program, const char* text);
