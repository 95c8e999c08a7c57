#include "src/prefs/StoreFile.h"

#include "kits/application/Message.h"
#include "kits/kernel/Threads.h"
#include "kits/storage/Directory.h"
#include "kits/storage/File.h"

#include <cstdio>

namespace {

constexpr int kLockAttempts = 6;
constexpr bigtime_t kLockPause = 100000;

/// The numbers tried for a name under which a file is kept.
constexpr int kMaxKept = 10000;

bool IsBusy(status_t status)
{
    return status == B_BUSY;
}

/// Tries while its answer asks for it, with pauses, as often as a lock is tried.
template <class Try> status_t Repeat(Try attempt, bool (*again)(status_t) = IsBusy)
{
    status_t status = attempt();
    for (int number = 1; again(status) && number < kLockAttempts; ++number) {
        snooze(kLockPause);
        status = attempt();
    }
    return status;
}

/// Whether it says nothing of the file: the next attempt may read it.
bool IsPassing(status_t status)
{
    return status == B_BUSY || status == B_NO_MEMORY || status == B_NO_MORE_FDS || status == B_INTERRUPTED;
}

/// Opens and locks a file and reads the message in it.
/// @param file  stays locked when it could be
/// @return B_BUSY when it is locked or was given another name meanwhile, B_ENTRY_NOT_FOUND when missing or empty
status_t ReadLocked(const BEntry& entry, BFile* file, BMessage* contents)
{
    status_t status = file->SetTo(&entry, B_READ_ONLY);
    if (status == B_OK) {
        status = file->Lock();
    }
    if (status == B_OK && !file->IsAt(&entry)) {
        status = B_BUSY;
    }
    off_t size = 0;
    if (status == B_OK) {
        status = file->GetSize(&size);
    }
    if (status != B_OK) {
        return status;
    }
    return size > 0 ? contents->Unflatten(file) : B_ENTRY_NOT_FOUND;
}

} // namespace

status_t LockWithRetry(BNode* node)
{
    return Repeat([node] { return node->Lock(); }, [](status_t status) { return status != B_OK; });
}

/// The file that is to be replaced: locked, so that nobody else replaces or repairs it at the same time.
struct StoreFile::OldFile {
    BNode node;
    bool exists = false;
};

StoreFile::StoreFile(const entry_ref& ref)
    : fRef(ref)
    , fBackupRef{.directory = ref.directory, .name = ref.name + ".backup"}
{
}

status_t StoreFile::Load(BMessage* contents, bool mayRepair)
{
    status_t status = B_BUSY;
    Repeat([&] { return TryLoad(contents, mayRepair, &status) ? B_OK : B_BUSY; });
    if (IsPassing(status)) {
        fUnread = true;
    }
    return status;
}

/// @return whether the status is the last word; else another process is at work
bool StoreFile::TryLoad(BMessage* contents, bool mayRepair, status_t* status)
{
    BMessage loaded;
    const BEntry mainEntry(&fRef);
    BFile main;
    const status_t mainStatus = ReadLocked(mainEntry, &main, &loaded);
    *status = mainStatus;
    if (mainStatus == B_OK) {
        if (mayRepair) {
            RemoveLeftBackup(&main);
        }
        *contents = std::move(loaded);
        fUnread = false;
        return true;
    }
    if (IsPassing(mainStatus)) {
        return mainStatus != B_BUSY;
    }

    BFile backup;
    const status_t backupStatus = ReadLocked(BEntry(&fBackupRef), &backup, &loaded);
    if (backupStatus == B_OK) {
        fUnread = false;
        if (mayRepair) {
            UseBackup(mainStatus);
        }
        *contents = std::move(loaded);
        *status = B_OK;
        return true;
    }
    if (IsPassing(backupStatus)) {
        *status = backupStatus;
        return backupStatus != B_BUSY;
    }

    // A writer may have finished between the two looks: then the file is there, and this one did not see it.
    if (backupStatus == B_ENTRY_NOT_FOUND && main.InitCheck() == B_ENTRY_NOT_FOUND &&
        BNode(&mainEntry).InitCheck() == B_OK) {
        *status = B_BUSY;
        return false;
    }
    *status = mainStatus != B_ENTRY_NOT_FOUND ? mainStatus : backupStatus;
    fUnread = !mayRepair || !PutAway(mainStatus, backupStatus, backup.InitCheck() == B_OK);
    return true;
}

/// Neither the file nor the backup is a whole store: makes room for the next ones.
/// @return whether nothing is left that could not be read
bool StoreFile::PutAway(status_t mainStatus, status_t backupStatus, bool backupIsOpen) const
{
    bool done = mainStatus == B_ENTRY_NOT_FOUND || KeepAside(fRef, kits::StatusText(mainStatus)) == B_OK;
    BEntry backup(&fBackupRef);
    if (backupStatus == B_ENTRY_NOT_FOUND && backupIsOpen) {
        // It is empty.
        backup.Remove();
    } else if (backup.Exists()) {
        done = KeepAside(fBackupRef, kits::StatusText(backupStatus)) == B_OK && done;
    }
    return done;
}

/// Gives the backup its place. Where that can't be, it is found again by the next start and by Replace.
void StoreFile::UseBackup(status_t mainStatus)
{
    if (mainStatus != B_ENTRY_NOT_FOUND && KeepAside(fRef, kits::StatusText(mainStatus)) != B_OK) {
        fUnread = true;
        return;
    }
    BDirectory folder(fRef.directory.c_str());
    if (BEntry(&fBackupRef).Rename(fRef.name.c_str(), true) == B_OK) {
        folder.Sync();
    }
}

/// The file is whole, but a loss of power could still take what the killed writer had not synced.
void StoreFile::RemoveLeftBackup(BNode* main) const
{
    BEntry backup(&fBackupRef);
    BDirectory folder(fRef.directory.c_str());
    if (backup.Exists() && main->Sync() == B_OK && folder.Sync() == B_OK) {
        if (backup.Remove() == B_DIRECTORY_NOT_EMPTY) {
            KeepAside(fBackupRef, kits::StatusText(B_IS_A_DIRECTORY));
        }
    }
}

status_t StoreFile::Replace(const BMessage& contents)
{
    BDirectory folder(fRef.directory.c_str());
    if (folder.InitCheck() != B_OK) {
        return folder.InitCheck();
    }
    OldFile old;
    status_t status = Repeat([&] { return LockOld(&old); });
    if (status == B_OK && old.exists) {
        status = MoveToBackup(&folder);
    }
    if (status != B_OK) {
        return status;
    }

    BFile file;
    status = WriteNew(contents, &file);
    if (status == B_OK) {
        status = folder.Sync();
    }
    BEntry backup(&fBackupRef);
    if (status != B_OK) {
        file.Unset();
        if (old.exists && backup.Rename(fRef.name.c_str(), true) == B_OK) {
            folder.Sync();
        }
        return status;
    }
    if (old.exists && fUnread) {
        KeepAside(fBackupRef, "not at the last start");
    } else if (old.exists) {
        // One that stays is removed by the next start.
        backup.Remove();
    }
    fUnread = false;
    return B_OK;
}

/// @return B_BUSY when another process is at work
status_t StoreFile::LockOld(OldFile* old)
{
    const BEntry main(&fRef);
    const BEntry backup(&fBackupRef);
    if (backup.Exists()) {
        if (const status_t status = PutInOrder(); status != B_OK) {
            return status;
        }
    }
    old->exists = main.Exists();
    if (!old->exists) {
        return backup.Exists() ? B_BUSY : B_OK;
    }
    status_t status = old->node.SetTo(&main);
    if (status != B_OK && !IsPassing(status) && main.Exists()) {
        // It can be moved although it can't be opened; as nobody has read it, it is not removed in the end.
        fUnread = fUnread || status != B_ENTRY_NOT_FOUND;
        return B_OK;
    }
    if (status == B_OK) {
        status = old->node.Lock();
    } else if (status == B_ENTRY_NOT_FOUND) {
        status = B_BUSY;
    }
    // With a backup beside it, it is the file that a writer has made and not yet locked.
    return status == B_OK && (!old->node.IsAt(&main) || backup.Exists()) ? B_BUSY : status;
}

/// Does what a start would do with a backup that a killed writer has left.
status_t StoreFile::PutInOrder()
{
    const bool wasUnread = fUnread;
    BMessage ignored;
    status_t status = B_BUSY;
    if (!TryLoad(&ignored, true, &status)) {
        return B_BUSY;
    }
    fUnread = fUnread || wasUnread;
    if (IsPassing(status)) {
        return status;
    }
    // What can't be put in order now must not be replaced by a newer backup either.
    return BEntry(&fBackupRef).Exists() ? B_IO_ERROR : B_OK;
}

status_t StoreFile::MoveToBackup(BDirectory* folder)
{
    BEntry main(&fRef);
    status_t status = main.Rename(fBackupRef.name.c_str(), true);
    if (status == B_OK) {
        status = folder->Sync();
        if (status != B_OK) {
            main.Rename(fRef.name.c_str(), true);
        }
    }
    return status;
}

/// @param file  stays open and locked on success
status_t StoreFile::WriteNew(const BMessage& contents, BFile* file) const
{
    const BEntry entry(&fRef);
    status_t status = file->SetTo(&entry, B_READ_WRITE | B_CREATE_FILE);
    if (status == B_OK) {
        status = LockWithRetry(file);
    }
    off_t size = 0;
    if (status == B_OK) {
        status = file->GetSize(&size);
    }
    // It was not there before, so what it holds is another writer's.
    if (status == B_OK && (size > 0 || !file->IsAt(&entry))) {
        status = B_BUSY;
    }
    if (status == B_OK) {
        status = contents.Flatten(file);
    }
    return status == B_OK ? file->Sync() : status;
}

status_t StoreFile::KeepAside(const entry_ref& ref, const char* reason) const
{
    BEntry entry(&ref);
    std::string kept;
    status_t status = B_FILE_EXISTS;
    for (int number = 1; status == B_FILE_EXISTS && number <= kMaxKept; ++number) {
        kept = fRef.name + (number == 1 ? ".kept" : ".kept-" + std::to_string(number));
        status = entry.Rename(kept.c_str());
    }
    if (status == B_OK) {
        BDirectory(fRef.directory.c_str()).Sync();
        std::fprintf(stderr, "qel: the settings in %s/%s could not be read (%s); they are kept as %s\n",
                     fRef.directory.c_str(), fRef.name.c_str(), reason, kept.c_str());
    }
    return status;
}
