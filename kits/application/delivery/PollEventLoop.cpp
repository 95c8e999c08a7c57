// SPDX-License-Identifier: MIT
#include "kits/application/delivery/PollEventLoop.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/delivery/MainThreadPrivate.h"

#include <optional>

namespace kits {

void PollEventLoop::Run()
{
    const InterfaceLocker locker;
    bool quits = false;
    fRuns.push_back(&quits);
    std::optional<NestedLoop> nested;
    if (fRuns.size() > 1)
        nested.emplace([&quits] {
            quits = true;
            Wake();
        });
    // Messages that already wait may be the last ones.
    RunDue();
    while (!quits) {
        WaitForWork(Deadline());
        RunDue();
    }
    fRuns.pop_back();
}

void PollEventLoop::Quit()
{
    if (!fRuns.empty())
        *fRuns.back() = true;
    Wake();
}

} // namespace kits
