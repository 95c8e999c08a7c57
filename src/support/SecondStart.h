// SPDX-License-Identifier: MIT
#pragma once

class BApplication;

/// What is left to do for a program of which there is one for each user, when it runs already: nothing, where the user
/// sees that it does; else one line on stderr, that it was started on another display or does not answer.
/// @param program  its name, for the line
/// @return the exit status: 0, or 1 when there was something to say
int EndSecondStart(const BApplication& application, const char* program);
