#pragma once

#include "kits/storage/Entry.h"

#include <atomic>

class BDirectory;
class BFile;
class BMessage;
class BNode;

/// Locks a file against other processes: six attempts with pauses of 0.1 seconds.
/// @return B_OK or the error of the last attempt
status_t LockWithRetry(BNode* node);

/// The file of a store and its backup: how it is replaced and found again, so that a process killed at any moment, a
/// full disk, an I/O error and a loss of power leave the old store or the new one, whole.
///
///     Replacing                                            a start that comes after it finds
///     1. lock the file; there is no backup                 the old store
///     2. rename it to the backup, sync the folder          the old store: there is no file, the backup is whole
///     3. make the file, lock it                            the old store: the file is empty, the backup is whole
///     4. write it, sync it, sync the folder                the old store while the file is broken, the new one after
///     5. remove the backup                                 the new store
///
/// A step that fails renames the backup back. The locks of both files are held to the end, so another process neither
/// reads half a file nor takes the backup of a writer at work for one that was left behind.
///
/// A whole file is used, and a left backup removed once the file is surely on the disk. A missing or broken one is
/// replaced by a whole backup. What is broken, and what this process could not read, is never removed: it is renamed to
/// the first free of NAME.kept, NAME.kept-2, ... with a line on stderr. An empty file counts as missing.
///
/// Several threads may use the object; the lock of the file keeps their work apart.
class StoreFile {
public:
    explicit StoreFile(const entry_ref& ref);

    /// @param contents   replaced by what the file holds; unchanged on failure
    /// @param mayRepair  whether the disk may be changed to put in order what was left behind
    /// @return B_ENTRY_NOT_FOUND without a file, B_BUSY when it stays locked, else why it can't be read
    status_t Load(BMessage* contents, bool mayRepair);

    /// @return B_OK when the contents are on the disk
    status_t Replace(const BMessage& contents);

private:
    struct OldFile;

    bool TryLoad(BMessage* contents, bool mayRepair, status_t* status);
    bool PutAway(status_t mainStatus, status_t backupStatus, bool backupIsOpen) const;
    void UseBackup(status_t mainStatus);
    void RemoveLeftBackup(BNode* main) const;

    status_t LockOld(OldFile* old);
    status_t PutInOrder();
    status_t MoveToBackup(BDirectory* folder);
    status_t WriteNew(const BMessage& contents, BFile* file) const;

    status_t KeepAside(const entry_ref& ref, const char* reason) const;

    const entry_ref fRef;
    const entry_ref fBackupRef;
    /// What is on the disk could not be read by this process, nor was it written by it.
    std::atomic<bool> fUnread = false;
};
