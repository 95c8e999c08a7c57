// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

namespace kits {

/// The wait of the main thread in its event loop, whichever loop that is: what has to be done before and after, so that
/// others get the interface lock, and the loop's descriptor tells of what other teams send. Main thread.
class MainWait {
public:
    /// Gives up the interface lock.
    void Begin();
    /// Takes it again, as deep as before. Nothing if no wait is under way.
    void End();

private:
    bool fIsUnderWay = false;
    int32 fDepth = 0;
};

} // namespace kits
