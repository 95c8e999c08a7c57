// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Threads.h"
#include "src/prefs/store/Preferences.h"

#include <list>
#include <memory>
#include <mutex>

/// Writes stores while the program runs, without making anybody wait: takes a copy and syncs that on a worker thread,
/// which exists only while there is something to write. Never two writes at once, whatever the number of stores; of
/// several copies of one store that wait, the newest is written and the others are dropped. A copy that is the same as
/// what was last written is not written again, so it may be called as often as one likes.
///
/// How the application uses it: one object for both stores. Whenever something may have been arranged, at most five
/// seconds later, and at every pulse, it archives its windows into the user's store and hands both stores to Write().
/// At exit it calls Drain() first, then syncs the common store and after it the user's one itself, whatever was written
/// before: so the order at exit is as if there was no writer.
///
/// Write() and Drain() are for one thread, that of the stores; the disk is touched by the worker alone, except where
/// told.
class StoreWriter {
public:
    StoreWriter() = default;
    /// Drains.
    ~StoreWriter();
    StoreWriter(const StoreWriter&) = delete;
    StoreWriter& operator=(const StoreWriter&) = delete;

    /// Has a copy of the store written.
    /// @return B_OK when it will be, or need not be; B_NO_INIT for a store without a file; else why no thread could be
    ///         made: the copy waits for the next call
    status_t Write(const Preferences& store);

    /// Whether the last copy handed over of each store is on the disk.
    bool HasWrittenAll() const;
    /// Whether a copy of this store was handed over, and the last one is on the disk.
    bool HasWritten(const Preferences& store) const;
    /// What the last write of this store that is over came to; B_OK when there was none.
    status_t ResultOf(const Preferences& store) const;

    /// Waits until everything handed over was written or has failed. Copies for which no thread could be made are
    /// written by the calling thread. The worker is gone when it returns.
    /// @return the first error of the last write of each store, B_OK when all are on the disk
    status_t Drain();

private:
    /// What is known of one store's file.
    struct Slot {
        entry_ref ref;
        std::unique_ptr<Preferences> waiting; ///< to be written next
        std::unique_ptr<Preferences> written; ///< on the disk, as far as this object knows
        bool isWriting = false;
        status_t result = B_OK; ///< of the last write
    };

    const Slot* SlotOf(const Preferences& store) const;
    static int32 WorkerEntry(void* self);
    void WriteWaiting();
    status_t StartWorker();

    mutable std::mutex fLock; ///< guards the slots and fIsWorking; held for moments only
    std::list<Slot> fSlots;   ///< those whose turn comes first are first
    bool fIsWorking = false;  ///< a worker will look at the slots once more
    thread_id fWorker = -1;   ///< the last worker; only the calling thread uses it
};
