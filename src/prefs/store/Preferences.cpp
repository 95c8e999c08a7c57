// SPDX-License-Identifier: MIT
#include "src/prefs/store/Preferences.h"

#include "kits/storage/Directory.h"
#include "kits/storage/File.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"
#include "src/prefs/store/StoreFile.h"

#include <string_view>
#include <utility>

Preferences* prefs_common = nullptr;
Preferences* prefs_user = nullptr;

namespace {

/// Returns the part after the last slash; a slash at the very beginning does not count.
std::string_view LeafOf(std::string_view name)
{
    const size_t slash = name.rfind('/');
    return slash == std::string_view::npos || slash == 0 ? name : name.substr(slash + 1);
}

} // namespace

Preferences::Preferences(const char* name, bool common, bool readOnly)
    : BMessage('pref')
    , fCommon(common)
    , fReadOnly(readOnly)
{
    fRef.name = std::string(LeafOf(name != nullptr ? name : "")) + (common ? ".common" : ".user");
    BPath path;
    fInitStatus = find_directory(B_COMMON_SETTINGS_DIRECTORY, &path, !fReadOnly);
    if (path.InitCheck() == B_OK)
        fRef.directory = path.Path();
    if (fInitStatus != B_OK)
        return;
    const BDirectory directory(path.Path());
    const BEntry entry(&directory, fRef.name.c_str());
    entry_ref ref;
    fInitStatus = entry.GetRef(&ref);
    if (fInitStatus == B_OK) {
        fRef = ref;
        fFile = std::make_shared<StoreFile>(ref);
        Revert();
    }
}

Preferences::Preferences(const Preferences& other) = default;

Preferences::~Preferences() = default;

status_t Preferences::GetRef(entry_ref* ref) const
{
    if (ref == nullptr)
        return B_BAD_VALUE;
    if (fInitStatus != B_OK)
        return B_NO_INIT;
    *ref = fRef;
    return B_OK;
}

std::vector<StoreNote> Preferences::TakeNotes()
{
    return std::exchange(fNotes, {});
}

void Preferences::KeepOld(const char* version)
{
    if (fFile != nullptr)
        fFile->KeepOld(version);
}

bool Preferences::Claim(const kits::AnyField& field)
{
    if (!field.IsIn(*this))
        field.Remove(this);
    return field.IsIn(*this);
}

status_t Preferences::NoteError(status_t status)
{
    if (fError == B_OK)
        fError = status;
    return status;
}

status_t Preferences::Sync()
{
    if (fInitStatus != B_OK)
        return B_NO_INIT;
    return fReadOnly ? B_NOT_ALLOWED : fFile->Replace(*this);
}

status_t Preferences::SaveTo(BFile* file)
{
    if (fInitStatus != B_OK || file == nullptr)
        return fInitStatus != B_OK ? B_NO_INIT : B_BAD_VALUE;
    status_t status = LockWithRetry(file);
    if (status == B_OK) {
        status = Flatten(file);
        file->Unlock();
    }
    return status;
}

status_t Preferences::LoadFrom(BFile* file)
{
    if (fInitStatus != B_OK || file == nullptr)
        return fInitStatus != B_OK ? B_NO_INIT : B_BAD_VALUE;
    status_t status = LockWithRetry(file);
    if (status == B_OK) {
        status = Unflatten(file);
        file->Unlock();
    }
    return status;
}

status_t Preferences::Revert()
{
    if (fInitStatus != B_OK)
        return B_NO_INIT;
    StoreFile::Found found;
    const status_t status = fFile->Load(this, !fReadOnly, &found);
    fUnreadStatus = found.unread;
    fNotes.insert(fNotes.end(), found.notes.begin(), found.notes.end());
    return status;
}
