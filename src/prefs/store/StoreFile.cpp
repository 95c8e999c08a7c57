// SPDX-License-Identifier: MIT
#include "src/prefs/store/StoreFile.h"

#include "kits/application/Message.h"
#include "kits/kernel/Bounds.h"
#include "kits/kernel/Threads.h"
#include "kits/storage/Directory.h"
#include "kits/storage/File.h"

#include <cstdio>

namespace {

constexpr int kLockAttempts = 6;
constexpr bigtime_t kLockPause = 100000;

/// How many numbers are tried for the name under which a file is kept.
constexpr int kMaxKept = kits::bounds::kMostKeptFiles;

constexpr size_t kLongestVersion = 20;
constexpr const char* kVersionCharacters = "0123456789abcdefghijklmnopqrstuvwxyz.";

/// The status of a link that leads nowhere. (B_ENTRY_NOT_FOUND says that there is no such name.)
constexpr status_t kLeadsNowhere = B_FILE_NOT_FOUND;

bool IsBusy(status_t status)
{
    return status == B_BUSY;
}

/// Repeats an attempt while its status asks for that, with pauses, as often as a lock is tried.
template <class Try> status_t Repeat(Try attempt, bool (*again)(status_t) = IsBusy)
{
    status_t status = attempt();
    for (int number = 1; again(status) && number < kLockAttempts; ++number) {
        snooze(kLockPause);
        status = attempt();
    }
    return status;
}

std::string NameIn(const BEntry& entry)
{
    entry_ref ref;
    entry.GetRef(&ref);
    return ref.name;
}

/// Returns whether the status says nothing about the file: the next attempt may read it.
bool IsPassing(status_t status)
{
    return status == B_BUSY || status == B_NO_MEMORY || status == B_NO_MORE_FDS || status == B_INTERRUPTED;
}

/// Returns whether the status says nothing about the contents.
bool MayBeWhole(status_t status)
{
    return IsPassing(status) || status == B_PERMISSION_DENIED || status == B_IO_ERROR;
}

/// Opens and locks a file and reads the message in it.
/// @param file  stays locked if it could be locked
/// @return B_BUSY if it is locked or was renamed meanwhile, B_ENTRY_NOT_FOUND if it is missing or empty
status_t ReadLocked(const BEntry& entry, BFile* file, BMessage* contents)
{
    status_t status = file->SetTo(&entry, B_READ_ONLY);
    if (status == B_ENTRY_NOT_FOUND && entry.IsSymLink())
        return kLeadsNowhere;
    if (status == B_OK)
        status = file->Lock();
    if (status == B_OK && !file->IsAt(&entry))
        status = B_BUSY;
    off_t size = 0;
    if (status == B_OK)
        status = file->GetSize(&size);
    if (status != B_OK)
        return status;
    return size > 0 ? contents->Unflatten(file) : B_ENTRY_NOT_FOUND;
}

} // namespace

status_t LockWithRetry(BNode* node)
{
    return Repeat([node] { return node->Lock(); }, [](status_t status) { return status != B_OK; });
}

/// The file that will be replaced: locked, so that nobody else replaces or repairs it at the same time.
struct StoreFile::OldFile {
    BNode node;
    bool exists = false;
    BEntry moved;        ///< where it is while the new one is written
    bool isKept = false; ///< it stays there
};

StoreFile::StoreFile(const entry_ref& ref)
    : fRef(ref)
    , fBackupRef{.directory = ref.directory, .name = ref.name + ".backup"}
{
}

status_t StoreFile::Load(BMessage* contents, bool mayRepair, Found* found)
{
    status_t status = B_BUSY;
    Repeat([&] { return TryLoad(contents, mayRepair, &status, found) ? B_OK : B_BUSY; });
    if (IsPassing(status)) {
        fUnread = status;
        found->unread = status;
    }
    if (!mayRepair && status != B_OK && status != B_ENTRY_NOT_FOUND)
        found->notes.push_back(NoteOf(fRef, status));
    return status;
}

/// @return whether the status is final; otherwise another process is at work
bool StoreFile::TryLoad(BMessage* contents, bool mayRepair, status_t* status, Found* found)
{
    BMessage loaded;
    const BEntry mainEntry(&fRef);
    BFile main;
    const status_t mainStatus = ReadLocked(mainEntry, &main, &loaded);
    *status = mainStatus;
    if (mainStatus == B_OK) {
        if (mayRepair)
            RemoveLeftBackup(&main, found);
        *contents = std::move(loaded);
        fUnread = B_OK;
        return true;
    }
    if (IsPassing(mainStatus))
        return mainStatus != B_BUSY;

    BFile backup;
    const status_t backupStatus = ReadLocked(BEntry(&fBackupRef), &backup, &loaded);
    if (backupStatus == B_OK) {
        fUnread = B_OK;
        if (mayRepair) {
            UseBackup(mainStatus, found);
        } else if (mainStatus != B_ENTRY_NOT_FOUND) {
            found->notes.push_back(NoteOf(fRef, mainStatus));
            found->notes.back().usedBackup = true;
        }
        *contents = std::move(loaded);
        *status = B_OK;
        return true;
    }
    if (IsPassing(backupStatus)) {
        *status = backupStatus;
        return backupStatus != B_BUSY;
    }

    // A writer may have finished between the two attempts: then the file exists, and this attempt did not see it.
    if (backupStatus == B_ENTRY_NOT_FOUND && main.InitCheck() == B_ENTRY_NOT_FOUND &&
        BNode(&mainEntry).InitCheck() == B_OK) {
        *status = B_BUSY;
        return false;
    }
    *status = mainStatus != B_ENTRY_NOT_FOUND ? mainStatus : backupStatus;
    if (mayRepair && !LeaveUnread(mainStatus, backupStatus, status, found))
        PutAway(mainStatus, backupStatus, backup.InitCheck() == B_OK, found);
    return true;
}

/// Neither could be read, but one of them may be whole.
/// @return whether both stay where they are
bool StoreFile::LeaveUnread(status_t mainStatus, status_t backupStatus, status_t* status, Found* found)
{
    if (!MayBeWhole(mainStatus) && !MayBeWhole(backupStatus))
        return false;
    *status = MayBeWhole(mainStatus) ? mainStatus : backupStatus;
    found->unread = *status;
    fUnread = *status;
    return true;
}

/// Neither the file nor the backup is a whole store: makes room for the next ones.
void StoreFile::PutAway(status_t mainStatus, status_t backupStatus, bool backupIsOpen, Found* found)
{
    const bool isMissing = mainStatus == B_ENTRY_NOT_FOUND;
    fUnread = isMissing || KeepAside(fRef, NoteOf(fRef, mainStatus), found) ? B_OK : mainStatus;
    BEntry backup(&fBackupRef);
    if (backupStatus == B_ENTRY_NOT_FOUND && backupIsOpen) {
        // It is empty.
        backup.Remove();
    } else if (backup.Exists()) {
        StoreNote note = NoteOf(fBackupRef, backupStatus);
        // This program's store is never a folder or a link that leads nowhere.
        note.isBackup = !isMissing || backupStatus == B_IS_A_DIRECTORY || backupStatus == kLeadsNowhere;
        if (!KeepAside(fBackupRef, note, found))
            fUnread = backupStatus;
    }
}

/// Renames the backup to the file's name. If that fails, the next start and Replace find the backup again.
void StoreFile::UseBackup(status_t mainStatus, Found* found)
{
    StoreNote note = NoteOf(fRef, mainStatus);
    note.usedBackup = true;
    if (mainStatus != B_ENTRY_NOT_FOUND && !KeepAside(fRef, note, found)) {
        fUnread = mainStatus;
        return;
    }
    BDirectory folder(fRef.directory.c_str());
    if (BEntry(&fBackupRef).Rename(fRef.name.c_str(), true) == B_OK)
        folder.Sync();
}

/// The file is whole, but a loss of power could still take what the killed writer had not synced.
void StoreFile::RemoveLeftBackup(BNode* main, Found* found) const
{
    BEntry backup(&fBackupRef);
    BDirectory folder(fRef.directory.c_str());
    if (backup.Exists() && main->Sync() == B_OK && folder.Sync() == B_OK) {
        if (backup.Remove() == B_DIRECTORY_NOT_EMPTY) {
            StoreNote note = NoteOf(fBackupRef, B_IS_A_DIRECTORY);
            note.isBackup = true;
            KeepAside(fBackupRef, note, found);
        }
    }
}

void StoreFile::KeepOld(const std::string& version)
{
    // These would be mistaken for something else.
    const bool isReserved = version == "backup" || version == "kept";
    const bool isName = !version.empty() && version.size() <= kLongestVersion &&
                        version.find_first_not_of(kVersionCharacters) == std::string::npos;
    fVersion = isName && !isReserved ? version : "";
    fKeepsVersion = true;
}

status_t StoreFile::Replace(const BMessage& contents)
{
    BDirectory folder(fRef.directory.c_str());
    if (folder.InitCheck() != B_OK)
        return folder.InitCheck();
    OldFile old;
    status_t status = Repeat([&] { return LockOld(&old); });
    if (status == B_OK && old.exists)
        status = MoveAway(&old, &folder);
    if (status != B_OK)
        return status;

    BFile file;
    status = WriteNew(contents, &file);
    if (status == B_OK)
        status = folder.Sync();
    if (status != B_OK) {
        file.Unset();
        if (old.exists && old.moved.Rename(fRef.name.c_str(), true) == B_OK)
            folder.Sync();
        return status;
    }
    if (old.exists && !old.isKept) {
        // If it stays, the next start removes it.
        old.moved.Remove();
    } else if (old.exists && fUnread != B_OK) {
        StoreNote note = NoteOf(fRef, fUnread);
        note.wasReplaced = true;
        note.kept = NameIn(old.moved);
        std::fprintf(stderr, "%s\n", LineOf(note).c_str());
    }
    fUnread = B_OK;
    fKeepsVersion = false;
    return B_OK;
}

/// @return B_BUSY if another process is at work
status_t StoreFile::LockOld(OldFile* old)
{
    const BEntry main(&fRef);
    const BEntry backup(&fBackupRef);
    if (backup.Exists()) {
        if (const status_t status = PutInOrder(); status != B_OK)
            return status;
    }
    old->exists = main.Exists();
    if (!old->exists)
        return backup.Exists() ? B_BUSY : B_OK;
    status_t status = old->node.SetTo(&main);
    if (status != B_OK && !IsPassing(status) && main.Exists()) {
        // It can be renamed although it cannot be opened; as nobody has read it, it is kept.
        if (status != B_ENTRY_NOT_FOUND || main.IsSymLink())
            fUnread = status == B_ENTRY_NOT_FOUND ? kLeadsNowhere : status;
        return B_OK;
    }
    if (status == B_OK)
        status = old->node.Lock();
    else if (status == B_ENTRY_NOT_FOUND)
        status = B_BUSY;
    // With a backup beside it, it is the file that a writer has created and not locked yet.
    return status == B_OK && (!old->node.IsAt(&main) || backup.Exists()) ? B_BUSY : status;
}

/// Does what a start would do with a backup that a killed writer has left.
status_t StoreFile::PutInOrder()
{
    const status_t wasUnread = fUnread;
    BMessage ignored;
    Found found;
    found.isStart = false;
    status_t status = B_BUSY;
    if (!TryLoad(&ignored, true, &status, &found))
        return B_BUSY;
    if (fUnread == B_OK)
        fUnread = wasUnread;
    if (IsPassing(status))
        return status;
    if (found.unread != B_OK && BEntry(&fBackupRef).Exists())
        KeepAside(fBackupRef, NoteOf(fBackupRef, found.unread), &found);
    // If the backup cannot be handled now, a newer one must not replace it either.
    return BEntry(&fBackupRef).Exists() ? B_IO_ERROR : B_OK;
}

/// Renames it to the backup, or to the name under which it stays.
status_t StoreFile::MoveAway(OldFile* old, BDirectory* folder) const
{
    old->moved.SetTo(&fRef);
    old->isKept = fUnread != B_OK || fKeepsVersion;
    status_t status = B_OK;
    if (fUnread != B_OK)
        status = Rename(&old->moved, &StoreFile::KeptName);
    else if (fKeepsVersion)
        status = Rename(&old->moved, &StoreFile::NameToKeep);
    else
        status = old->moved.Rename(fBackupRef.name.c_str(), true);
    if (status == B_OK) {
        status = folder->Sync();
        if (status != B_OK)
            old->moved.Rename(fRef.name.c_str(), true);
    }
    return status;
}

/// @param file  stays open and locked on success
status_t StoreFile::WriteNew(const BMessage& contents, BFile* file) const
{
    const BEntry entry(&fRef);
    status_t status = file->SetTo(&entry, B_READ_WRITE | B_CREATE_FILE);
    if (status == B_OK)
        status = LockWithRetry(file);
    off_t size = 0;
    if (status == B_OK)
        status = file->GetSize(&size);
    // It did not exist before, so any content is another writer's.
    if (status == B_OK && (size > 0 || !file->IsAt(&entry)))
        status = B_BUSY;
    if (status == B_OK)
        status = contents.Flatten(file);
    return status == B_OK ? file->Sync() : status;
}

std::string StoreFile::KeptName(int number) const
{
    return fRef.name + (number == 1 ? ".kept" : ".kept-" + std::to_string(number));
}

std::string StoreFile::NameToKeep(int number) const
{
    if (fVersion.empty())
        return fRef.name + "." + std::to_string(number);
    return fRef.name + "." + fVersion + (number == 1 ? "" : "-" + std::to_string(number));
}

/// Gives it the first of these names that is free.
status_t StoreFile::Rename(BEntry* entry, std::string (StoreFile::*name)(int) const) const
{
    status_t status = B_FILE_EXISTS;
    for (int number = 1; status == B_FILE_EXISTS && number <= kMaxKept; ++number)
        status = entry->Rename((this->*name)(number).c_str());
    return status;
}

StoreNote StoreFile::NoteOf(const entry_ref& ref, status_t reason) const
{
    StoreNote note;
    note.folder = ref.directory;
    note.file = ref.name;
    note.reason = reason;
    return note;
}

/// @return whether it has another name now
bool StoreFile::KeepAside(const entry_ref& ref, StoreNote note, Found* found) const
{
    BEntry entry(&ref);
    note.notKept = Rename(&entry, &StoreFile::KeptName);
    if (note.notKept == B_OK) {
        note.kept = NameIn(entry);
        BDirectory(fRef.directory.c_str()).Sync();
    }
    if (note.notKept == B_OK || found->isStart)
        std::fprintf(stderr, "%s\n", LineOf(note).c_str());
    found->notes.push_back(note);
    return note.notKept == B_OK;
}
