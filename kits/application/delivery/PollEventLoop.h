// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/EventLoop.h"

#include <vector>

namespace kits {

/// The event loop without a toolkit: poll(2) on the wake descriptor alone.
class PollEventLoop : public EventLoop {
public:
    void Run() override;
    void Quit() override;

private:
    std::vector<bool*> fRuns; ///< for each active Run, the innermost last: whether it must end
};

} // namespace kits
