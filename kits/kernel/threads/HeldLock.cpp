// SPDX-License-Identifier: MIT
#include "kits/kernel/HeldLock.h"

#include "kits/kernel/threads/ThreadRecord.h"

namespace kits {

void HeldLock::NoteHeld()
{
    fHolder = &ThreadRecord::Current();
    fOlder = fHolder->fNewestHeldLock;
    fNewer = nullptr;
    if (fOlder != nullptr)
        fOlder->fNewer = this;
    fHolder->fNewestHeldLock = this;
}

void HeldLock::NoteReleased() noexcept
{
    if (fOlder != nullptr)
        fOlder->fNewer = fNewer;
    if (fNewer != nullptr)
        fNewer->fOlder = fOlder;
    else
        fHolder->fNewestHeldLock = fOlder;
    fHolder = nullptr;
}

} // namespace kits
