// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <chrono>

/// Shared by bench_teams and the process that it starts.

inline constexpr const char* kReceiverSignature = "application/x-vnd.bench-teams_receiver";
/// Asks for this many handlers ("count"); the answer has their messengers ("messenger").
inline constexpr uint32 kMakeHandlers = 'many';
inline constexpr int kEchoDescriptor = 3;
inline constexpr int kMomentsDescriptor = 4;

/// Comparable between all processes.
inline int64 MonotonicNanoseconds()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
