// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <atomic>

/// Counts the changes of everything that the program stores: charts, the sampler, windows. Code that changes any of it
/// calls Note(); Autosave archives only after that. Any thread.
class Changes {
public:
    static void Note() { ++sCount; }
    static uint64 Count() { return sCount; }

private:
    inline static std::atomic<uint64> sCount = 0;
};
