// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

/// Sends an application mutated frames, on one connection after the other, until it has read this many of them, stdin
/// closes, or the application ends. A frame counts when the application must have read it: it has answered a ping
/// behind it, or the frame was the first bad one of its connection and that was closed. Prints the number at the end.
/// @param recorded  a file of recorded frames
/// @return 0 if there were that many
int SendMutations(const char* signature, const char* recorded, uint64 count, uint32 seed);
