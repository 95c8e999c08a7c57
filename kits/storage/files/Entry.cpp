// SPDX-License-Identifier: MIT
#include "kits/storage/Entry.h"

#include "kits/storage/Directory.h"
#include "kits/storage/Path.h"
#include "kits/storage/files/FileCallsPrivate.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

constexpr int kMaxLinks = 40;

/// Splits an absolute path that BPath has cleaned; the root becomes "." in itself.
entry_ref Split(const std::string& path)
{
    const size_t slash = path.rfind('/');
    entry_ref ref{.directory = path.substr(0, slash), .name = path.substr(slash + 1)};
    if (ref.directory.empty())
        ref.directory = "/";
    if (ref.name.empty())
        ref.name = ".";
    return ref;
}

std::string Join(const entry_ref& ref)
{
    return ref.directory == "/" ? "/" + ref.name : ref.directory + "/" + ref.name;
}

/// Returns the target of the link; empty if the path is no link.
std::string LinkTarget(const std::string& path)
{
    char target[B_PATH_NAME_LENGTH];
    const ssize_t length = readlink(path.c_str(), target, sizeof target);
    return length > 0 ? std::string(target, static_cast<size_t>(length)) : std::string();
}

status_t CheckFolder(const std::string& path)
{
    struct stat info;
    if (stat(path.c_str(), &info) != 0)
        return kits::StatusFromErrno(errno);
    return S_ISDIR(info.st_mode) ? B_OK : B_NOT_A_DIRECTORY;
}

} // namespace

status_t get_ref_for_path(const char* path, entry_ref* ref)
{
    BPath whole;
    if (ref == nullptr || whole.SetTo(path) != B_OK || *whole.Leaf() == '\0')
        return B_BAD_VALUE;
    *ref = Split(whole.Path());
    return B_OK;
}

BEntry::BEntry(const BDirectory* directory, const char* leaf, bool traverse)
{
    SetTo(directory, leaf, traverse);
}

BEntry::BEntry(const char* path, bool traverse)
{
    SetTo(path, traverse);
}

BEntry::BEntry(const entry_ref* ref, bool traverse)
{
    SetTo(ref, traverse);
}

status_t BEntry::SetTo(const BDirectory* directory, const char* leaf, bool traverse)
{
    Unset();
    if (directory == nullptr || leaf == nullptr || *leaf == '\0')
        return fStatus = B_BAD_VALUE;
    if (directory->InitCheck() != B_OK)
        return fStatus = directory->InitCheck();
    return fStatus = SetToPath(BPath(directory->PathName().c_str(), leaf), traverse);
}

status_t BEntry::SetTo(const char* path, bool traverse)
{
    Unset();
    return fStatus = SetToPath(BPath(path), traverse);
}

status_t BEntry::SetTo(const entry_ref* ref, bool traverse)
{
    Unset();
    if (ref == nullptr || ref->name.empty())
        return fStatus = B_BAD_VALUE;
    return fStatus = SetToPath(BPath(ref->directory.c_str(), ref->name.c_str()), traverse);
}

status_t BEntry::SetToPath(const BPath& whole, bool traverse)
{
    if (whole.InitCheck() != B_OK)
        return whole.InitCheck();
    std::string path = whole.Path();
    if (traverse) {
        int links = 0;
        for (std::string target = LinkTarget(path); !target.empty(); target = LinkTarget(path)) {
            if (++links > kMaxLinks)
                return B_LINK_LIMIT;
            const BPath next =
                target[0] == '/' ? BPath(target.c_str()) : BPath(Split(path).directory.c_str(), target.c_str());
            path = next.Path();
        }
    }
    const entry_ref ref = Split(path);
    if (path.size() >= B_PATH_NAME_LENGTH || ref.name.size() >= B_FILE_NAME_LENGTH)
        return B_NAME_TOO_LONG;
    if (const status_t status = CheckFolder(ref.directory); status != B_OK)
        return status;
    fRef = ref;
    return B_OK;
}

void BEntry::Unset()
{
    fRef = entry_ref();
    fStatus = B_NO_INIT;
}

bool BEntry::Exists() const
{
    struct stat info;
    return fStatus == B_OK && lstat(Join(fRef).c_str(), &info) == 0;
}

bool BEntry::IsSymLink() const
{
    struct stat info;
    return fStatus == B_OK && lstat(Join(fRef).c_str(), &info) == 0 && S_ISLNK(info.st_mode);
}

status_t BEntry::GetRef(entry_ref* ref) const
{
    if (ref == nullptr)
        return B_BAD_VALUE;
    if (fStatus == B_OK)
        *ref = fRef;
    return fStatus;
}

status_t BEntry::GetPath(BPath* path) const
{
    if (path == nullptr)
        return B_BAD_VALUE;
    return fStatus == B_OK ? path->SetTo(Join(fRef).c_str()) : fStatus;
}

status_t BEntry::Rename(const char* path, bool clobber)
{
    if (fStatus != B_OK)
        return fStatus;
    if (path == nullptr || *path == '\0')
        return B_BAD_VALUE;
    BEntry renamed;
    const BPath whole = *path == '/' ? BPath(path) : BPath(fRef.directory.c_str(), path);
    status_t status = renamed.SetTo(whole.Path());
    if (status == B_OK)
        status = kits::RenameFile(Join(fRef).c_str(), Join(renamed.fRef).c_str(), clobber);
    if (status == B_OK)
        *this = renamed;
    return status;
}

status_t BEntry::Remove()
{
    return fStatus == B_OK ? kits::RemoveFile(Join(fRef).c_str()) : fStatus;
}
