// SPDX-License-Identifier: MIT
#include "kits/application/MainWait.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/delivery/LoopGuest.h"

namespace kits {

void MainWait::Begin()
{
    End();
    if (LoopGuest* guest = LoopGuest::Get())
        guest->MainWaits();
    fDepth = InterfaceLock::Get().ReleaseAll();
    fIsUnderWay = true;
}

void MainWait::End()
{
    if (!fIsUnderWay)
        return;
    fIsUnderWay = false;
    // First of all, because taking the lock may take long.
    if (LoopGuest* guest = LoopGuest::Get())
        guest->MainWorks();
    InterfaceLock::Get().Restore(fDepth);
}

} // namespace kits
