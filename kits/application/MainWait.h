// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

namespace kits {

/// The wait of the main thread in its event loop, of either form. Around it other threads get the interface lock, and
/// data from other teams make the loop's descriptor readable. Main thread.
class MainWait {
public:
    /// Releases the interface lock.
    void Begin();
    /// Takes it again, as deep as before. Does nothing if no wait is under way.
    void End();

private:
    bool fIsUnderWay = false;
    int32 fDepth = 0;
};

} // namespace kits
