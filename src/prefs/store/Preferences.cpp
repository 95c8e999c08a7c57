// SPDX-License-Identifier: MIT
#include "src/prefs/store/Preferences.h"

#include "kits/storage/Directory.h"
#include "kits/storage/File.h"
#include "kits/storage/FindDirectory.h"
#include "kits/storage/Path.h"
#include "src/prefs/store/StoreFile.h"

#include <string>
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
    , fReadOnly(readOnly)
{
    initialise(name, common);
}

Preferences::Preferences(const Preferences& other) = default;

Preferences::~Preferences() = default;

void Preferences::initialise(const char* name, bool common)
{
    fCommon = common;
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

bool Preferences::Claim(const char* name, type_code type)
{
    type_code found = type;
    if (GetInfo(name, &found) != B_OK)
        return false;
    if (found != type)
        RemoveName(name);
    return found == type;
}

status_t Preferences::NoteError(status_t status)
{
    if (fError == B_OK)
        fError = status;
    return status;
}

status_t Preferences::SetBool(const char* name, bool value)
{
    return NoteError(HasBool(name) ? ReplaceBool(name, value) : AddBool(name, value));
}

status_t Preferences::SetFloat(const char* name, float value)
{
    return NoteError(HasFloat(name) ? ReplaceFloat(name, value) : AddFloat(name, value));
}

status_t Preferences::SetInt8(const char* name, int8 value)
{
    return NoteError(HasInt8(name) ? ReplaceInt8(name, value) : AddInt8(name, value));
}

status_t Preferences::SetInt16(const char* name, int16 value)
{
    return NoteError(HasInt16(name) ? ReplaceInt16(name, value) : AddInt16(name, value));
}

status_t Preferences::SetInt32(const char* name, int32 value)
{
    return NoteError(HasInt32(name) ? ReplaceInt32(name, value) : AddInt32(name, value));
}

status_t Preferences::SetInt64(const char* name, int64 value)
{
    return NoteError(HasInt64(name) ? ReplaceInt64(name, value) : AddInt64(name, value));
}

status_t Preferences::SetString(const char* name, const char* value)
{
    return NoteError(HasString(name) ? ReplaceString(name, value) : AddString(name, value));
}

status_t Preferences::SetRect(const char* name, BRect value)
{
    return NoteError(HasRect(name) ? ReplaceRect(name, value) : AddRect(name, value));
}

status_t Preferences::SetPoint(const char* name, BPoint value)
{
    return NoteError(HasPoint(name) ? ReplacePoint(name, value) : AddPoint(name, value));
}

status_t Preferences::SetMessage(const char* name, const BMessage* value)
{
    return NoteError(HasMessage(name) ? ReplaceMessage(name, value) : AddMessage(name, value));
}

status_t Preferences::SetData(const char* name, type_code type, const void* data, ssize_t numBytes)
{
    return NoteError(HasData(name, type) ? ReplaceData(name, type, data, numBytes)
                                         : AddData(name, type, data, numBytes, true, 1));
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
