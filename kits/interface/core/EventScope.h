// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

namespace kits {

/// An event of the toolkit is handled as long as one of these exists. Main thread.
class EventScope {
public:
    EventScope() { ++sCount; }
    ~EventScope() { --sCount; }
    EventScope(const EventScope&) = delete;
    EventScope& operator=(const EventScope&) = delete;

    /// True if an object's event handler is on the stack.
    static bool IsOpen() { return sCount > 0; }

private:
    static inline int32 sCount = 0;
};

} // namespace kits
