#pragma once

#include "kits/application/EventLoop.h"

namespace kits {

/// The event loop without a toolkit: poll(2) on the wake descriptor alone.
class PollEventLoop : public EventLoop {
public:
    void Run() override;
    void Quit() override;

private:
    int32 fLevels = 0; ///< how many Runs are under way
    int32 fQuitAt = 0; ///< Runs at this level and above end; 0 for none
};

} // namespace kits
