// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <poll.h>

#include <vector>

namespace kits {

/// The wait of the toolkit's dispatcher, done in its place. From the end of its own wait to the first event, and from
/// the last event to the next wait, the dispatcher asks all its sources what they have: cold code, which after a pause
/// costs as much as drawing a chart. Who wakes for messages alone need not ask them.
///
/// Works where the dispatcher is GLib's, whose contexts tell what they wait for; GLib is taken as it was loaded by the
/// toolkit. With any other dispatcher Begin() says no. Main thread.
class DispatcherWait {
public:
    /// @param ours  the descriptor that the program wakes for; the dispatcher watches it as well
    explicit DispatcherWait(int ours);

    /// Learns what the dispatcher would wait for now, and for how long.
    /// @return false if it has something to do already, or can't be asked
    bool Begin();
    /// Waits for that.
    /// @return true if our descriptor can be read and nothing else is to be done; false: it is the dispatcher's turn
    bool Await();

private:
    const int fOurs;
    std::vector<pollfd> fDescriptors;
    bigtime_t fUntil;
};

} // namespace kits
