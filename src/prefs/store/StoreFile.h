// SPDX-License-Identifier: MIT
#pragma once

#include "kits/storage/Entry.h"
#include "src/prefs/store/StoreNote.h"

#include <atomic>
#include <string>
#include <vector>

class BDirectory;
class BFile;
class BMessage;
class BNode;

/// Locks a file against other processes: six attempts with pauses of 0.1 seconds.
/// @return B_OK or the error of the last attempt
status_t LockWithRetry(BNode* node);

/// The file of a store and its backup: replaces and finds it in a way that leaves either the old or the new store whole
/// after a kill at any moment, a full disk, an I/O error or a loss of power.
///
///     Replacing                                            a start that comes after it finds
///     1. lock the file; there is no backup                 the old store
///     2. rename it to the backup, sync the folder          the old store: there is no file, the backup is whole
///     3. make the file, lock it                            the old store: the file is empty, the backup is whole
///     4. write it, sync it, sync the folder                the old store while the file is broken, the new one after
///     5. remove the backup                                 the new store
///
/// A step that fails renames the backup back. The locks of both files are held to the end, so another process neither
/// reads half a file nor mistakes the backup of an active writer for one that was left behind.
///
/// If the file is whole, it is used, and a leftover backup is removed once the file is certainly on the disk. If it is
/// missing or broken, a whole backup replaces it. A broken file is never removed, but renamed to the first free of
/// NAME.kept, NAME.kept-2, ... with a line on stderr; so is a link that leads nowhere, or a folder in place of a file.
/// A link to a file is read, and replaced by a file when the store is saved. An empty file counts as missing.
///
/// A file that could not be read but may be whole (it is locked, may not be read, or the disk fails) stays in place,
/// unless there is a whole backup. Replace() renames it as it does a broken one, instead of step 2: so it is safe at
/// every moment, and step 5 is omitted.
///
/// Several threads may use the object; the lock of the file keeps their work apart.
class StoreFile {
public:
    explicit StoreFile(const entry_ref& ref);

    /// What loading found besides the contents.
    struct Found {
        status_t unread = B_OK; ///< why a file that was left in place could not be read
        std::vector<StoreNote> notes;
        bool isStart = true; ///< also reports on stderr what could not be renamed
    };

    /// @param contents   replaced by the file's contents; unchanged on failure
    /// @param mayRepair  true if the call may repair the remains of an earlier write on the disk
    /// @return B_ENTRY_NOT_FOUND without a file, B_BUSY if it stays locked, otherwise why it cannot be read
    status_t Load(BMessage* contents, bool mayRepair, Found* found);

    /// @return B_OK if the contents are on the disk
    status_t Replace(const BMessage& contents);

    /// Makes the next Replace() keep the present file, as NAME.VERSION, or, if the version is not 1 to 20 of 0-9, a-z
    /// and dots, as the first free of NAME.1, NAME.2, ... A file that already has the name stays, and "-2", "-3", ...
    /// is added. Not while another thread is in Replace().
    void KeepOld(const std::string& version);

private:
    struct OldFile;

    bool TryLoad(BMessage* contents, bool mayRepair, status_t* status, Found* found);
    bool LeaveUnread(status_t mainStatus, status_t backupStatus, status_t* status, Found* found);
    void PutAway(status_t mainStatus, status_t backupStatus, bool backupIsOpen, Found* found);
    void UseBackup(status_t mainStatus, Found* found);
    void RemoveLeftBackup(BNode* main, Found* found) const;

    status_t LockOld(OldFile* old);
    status_t PutInOrder();
    status_t MoveAway(OldFile* old, BDirectory* folder) const;
    status_t WriteNew(const BMessage& contents, BFile* file) const;

    std::string NameToKeep(int number) const;
    status_t Rename(BEntry* entry, std::string (StoreFile::*name)(int) const) const;
    std::string KeptName(int number) const;
    StoreNote NoteOf(const entry_ref& ref, status_t reason) const;
    bool KeepAside(const entry_ref& ref, StoreNote note, Found* found) const;

    const entry_ref fRef;
    const entry_ref fBackupRef;
    /// Why this process could not read the file on the disk; B_OK if it has read or written that.
    std::atomic<status_t> fUnread = B_OK;
    std::atomic<bool> fKeepsVersion = false;
    std::string fVersion; ///< of the file to keep; empty for a number
};
