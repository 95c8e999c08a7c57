// SPDX-License-Identifier: MIT
#include "src/prefs/store/StoreWriter.h"

#include <algorithm>

StoreWriter::~StoreWriter()
{
    Drain();
}

status_t StoreWriter::Write(const Preferences& store)
{
    entry_ref ref;
    if (const status_t status = store.GetRef(&ref); status != B_OK)
        return status;
    {
        const std::lock_guard lock(fLock);
        auto slot = std::find_if(fSlots.begin(), fSlots.end(), [&](const Slot& other) { return other.ref == ref; });
        if (slot == fSlots.end()) {
            slot = fSlots.emplace(fSlots.end());
            slot->ref = ref;
        }
        const bool isAtWork = slot->waiting != nullptr || slot->isWriting;
        if (!isAtWork && slot->written != nullptr && slot->written->HasSameData(store))
            return B_OK;
        slot->waiting = std::make_unique<Preferences>(store);
        if (fIsWorking)
            return B_OK;
        fIsWorking = true;
    }
    return StartWorker();
}

status_t StoreWriter::StartWorker()
{
    // The previous one has nothing left to do but end.
    wait_for_thread(fWorker, nullptr);
    fWorker = spawn_thread(WorkerEntry, "Store writer", B_LOW_PRIORITY, this);
    const status_t status = fWorker < 0 ? fWorker : resume_thread(fWorker);
    if (status != B_OK) {
        const std::lock_guard lock(fLock);
        fIsWorking = false;
    }
    return status;
}

int32 StoreWriter::WorkerEntry(void* self)
{
    static_cast<StoreWriter*>(self)->WriteWaiting();
    return B_OK;
}

void StoreWriter::WriteWaiting()
{
    std::unique_lock lock(fLock);
    for (;;) {
        const auto slot =
            std::find_if(fSlots.begin(), fSlots.end(), [](const Slot& any) { return any.waiting != nullptr; });
        if (slot == fSlots.end()) {
            fIsWorking = false;
            return;
        }
        std::unique_ptr<Preferences> copy = std::move(slot->waiting);
        slot->written.reset();
        slot->isWriting = true;
        // To the end, so that a store that changes all the time does not keep the others from the disk.
        fSlots.splice(fSlots.end(), fSlots, slot);
        lock.unlock();
        const status_t result = copy->Sync();
        lock.lock();
        slot->isWriting = false;
        slot->result = result;
        if (result == B_OK)
            slot->written = std::move(copy);
    }
}

bool StoreWriter::HasWrittenAll() const
{
    const std::lock_guard lock(fLock);
    return std::all_of(fSlots.begin(), fSlots.end(),
                       [](const Slot& slot) { return slot.waiting == nullptr && slot.written != nullptr; });
}

bool StoreWriter::HasWritten(const Preferences& store) const
{
    const std::lock_guard lock(fLock);
    const Slot* slot = SlotOf(store);
    return slot != nullptr && slot->waiting == nullptr && slot->written != nullptr;
}

status_t StoreWriter::ResultOf(const Preferences& store) const
{
    const std::lock_guard lock(fLock);
    const Slot* slot = SlotOf(store);
    return slot != nullptr ? slot->result : B_OK;
}

/// Called with the lock held.
const StoreWriter::Slot* StoreWriter::SlotOf(const Preferences& store) const
{
    const auto slot =
        std::find_if(fSlots.begin(), fSlots.end(), [&](const Slot& one) { return one.ref == store.Place(); });
    return slot != fSlots.end() ? &*slot : nullptr;
}

status_t StoreWriter::Drain()
{
    wait_for_thread(fWorker, nullptr);
    WriteWaiting();
    const std::lock_guard lock(fLock);
    const auto failed =
        std::find_if(fSlots.begin(), fSlots.end(), [](const Slot& slot) { return slot.result != B_OK; });
    return failed != fSlots.end() ? failed->result : B_OK;
}
