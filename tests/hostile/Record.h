// SPDX-License-Identifier: MIT
#pragma once

/// Stands in for an application and writes the frames that others send it to a file, until stdin closes: of every kind
/// of frame, and of messages with every code, the first few.
/// @param signature  whose place to take; that application must not run
/// @param sampler    null, or the application to ask for samples, which come as to a chart
int RecordFrames(const char* signature, const char* file, const char* sampler);
