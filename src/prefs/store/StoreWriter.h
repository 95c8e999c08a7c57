// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Threads.h"
#include "src/prefs/store/Preferences.h"

#include <list>
#include <memory>
#include <mutex>

/// Writes stores while the program runs, without making anybody wait: takes a copy and syncs that on a worker thread,
/// which exists only while there is something to write. There are never two writes at once, whatever the number of
/// stores; of several waiting copies of one store, the newest is written and the others are dropped. A copy that equals
/// the last written one is not written again, so callers may call it as often as they like.
///
/// How the application uses it: one object for both stores. Whenever something may have been arranged, and at every
/// pulse, it archives its windows into the user's store, at most five seconds later, and passes both stores to Write().
/// At exit it first calls Drain(), then syncs the common store and the user's one itself, whatever was written before:
/// so the order at exit is the same as without a writer.
///
/// Only the thread of the stores may call Write() and Drain(); only the worker accesses the disk, unless stated
/// otherwise.
class StoreWriter {
public:
    StoreWriter() = default;
    /// Drains.
    ~StoreWriter();
    StoreWriter(const StoreWriter&) = delete;
    StoreWriter& operator=(const StoreWriter&) = delete;

    /// Has a copy of the store written.
    /// @return B_OK if it will be written, or need not be; B_NO_INIT for a store without a file; otherwise why no
    ///         thread could be made: then the copy waits for the next call
    status_t Write(const Preferences& store);

    /// Returns whether the last copy of each store is on the disk.
    bool HasWrittenAll() const;
    /// Returns whether this store was passed to Write(), and its last copy is on the disk.
    bool HasWritten(const Preferences& store) const;
    /// Returns the result of the last finished write of this store; B_OK if there was none.
    status_t ResultOf(const Preferences& store) const;

    /// Waits until every copy was written or has failed. The calling thread writes copies for which no thread could be
    /// made. No worker runs when it returns.
    /// @return the first error among the last writes of all stores, B_OK if all are on the disk
    status_t Drain();

private:
    /// The state of one store's file.
    struct Slot {
        entry_ref ref;
        std::unique_ptr<Preferences> waiting; ///< the next to be written
        std::unique_ptr<Preferences> written; ///< on the disk, as far as this object knows
        bool isWriting = false;
        status_t result = B_OK; ///< of the last write
    };

    const Slot* SlotOf(const Preferences& store) const;
    static int32 WorkerEntry(void* self);
    void WriteWaiting();
    status_t StartWorker();

    mutable std::mutex fLock; ///< guards the slots and fIsWorking; held only briefly
    std::list<Slot> fSlots;   ///< in the order of their turns
    bool fIsWorking = false;  ///< a worker will check the slots once more
    thread_id fWorker = -1;   ///< the last worker; only the calling thread uses it
};
