// SPDX-License-Identifier: MIT
#pragma once

/// Takes the place of an application and writes the frames that others send it to a file, until stdin closes: the first
/// few of every kind of frame, and of messages with every code.
/// @param signature  the application to replace, which must not run
/// @param sampler    null, or the application to ask for samples, as a chart does
int RecordFrames(const char* signature, const char* file, const char* sampler);
