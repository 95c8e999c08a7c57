// SPDX-License-Identifier: MIT
#include "kits/storage/Node.h"

#include "kits/storage/Entry.h"
#include "kits/storage/Path.h"
#include "kits/storage/files/Attributes.h"
#include "kits/storage/files/FileCallsPrivate.h"
#include "kits/support/TypeConstants.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

/// Checks whether the open file may be used under a name that others could have created: see B_PRIVATE_FILE.
status_t CheckPrivate(int descriptor)
{
    struct stat info;
    if (fstat(descriptor, &info) != 0)
        return kits::StatusFromErrno(errno);
    return S_ISREG(info.st_mode) && info.st_nlink == 1 && info.st_uid == geteuid() ? B_OK : B_NOT_ALLOWED;
}

int SystemFlags(uint32 openMode)
{
    constexpr int kAccess[] = {O_RDONLY, O_WRONLY, O_RDWR};
    int flags = kAccess[std::min<uint32>(openMode & 3, B_READ_WRITE)];
    if ((openMode & B_CREATE_FILE) != 0) {
        flags |= O_CREAT;
        if ((openMode & B_FAIL_IF_EXISTS) != 0)
            flags |= O_EXCL;
    }
    if ((openMode & B_PRIVATE_FILE) != 0)
        flags |= O_NOFOLLOW;
    return flags;
}

} // namespace

BNode::BNode(const BEntry* entry)
{
    SetTo(entry);
}

status_t BNode::SetTo(const char* path)
{
    return OpenPath(path, B_READ_ONLY);
}

status_t BNode::SetTo(const BEntry* entry)
{
    const BPath path(entry);
    return path.InitCheck() == B_OK ? SetTo(path.Path()) : Fail(path.InitCheck());
}

void BNode::Unset()
{
    fFile.Close();
    fLocked = false;
    fStatus = B_NO_INIT;
}

status_t BNode::Fail(status_t status)
{
    Unset();
    return fStatus = status;
}

status_t BNode::OpenPath(const char* path, uint32 openMode)
{
    const BPath whole(path);
    Unset();
    if (whole.InitCheck() != B_OK)
        return fStatus = whole.InitCheck();
    const bool isPrivate = (openMode & B_PRIVATE_FILE) != 0;
    status_t status = kits::OpenFile(whole.Path(), SystemFlags(openMode), &fFile);
    if (isPrivate && status == B_LINK_LIMIT)
        status = B_NOT_ALLOWED;
    if (isPrivate && status == B_OK)
        status = CheckPrivate(Descriptor());
    if (status == B_OK && (openMode & B_ERASE_FILE) != 0)
        status = kits::TruncateFile(Descriptor(), 0);
    return status == B_OK ? fStatus = B_OK : Fail(status);
}

status_t BNode::Lock()
{
    if (fStatus != B_OK || fLocked)
        return fLocked ? B_BUSY : fStatus;
    const status_t status = kits::LockFile(Descriptor());
    fLocked = status == B_OK;
    return status;
}

status_t BNode::Unlock()
{
    if (fStatus != B_OK || !fLocked)
        return fStatus != B_OK ? fStatus : B_BAD_VALUE;
    const status_t status = kits::UnlockFile(Descriptor());
    fLocked = status != B_OK;
    return status;
}

status_t BNode::GetSize(off_t* size) const
{
    if (fStatus != B_OK || size == nullptr)
        return fStatus != B_OK ? fStatus : B_BAD_VALUE;
    struct stat info;
    if (fstat(Descriptor(), &info) != 0)
        return kits::StatusFromErrno(errno);
    *size = info.st_size;
    return B_OK;
}

status_t BNode::Sync()
{
    return fStatus == B_OK ? kits::SyncFile(Descriptor()) : fStatus;
}

bool BNode::IsAt(const BEntry* entry) const
{
    const BPath path(entry);
    struct stat mine;
    struct stat theirs;
    return fStatus == B_OK && path.InitCheck() == B_OK && fstat(Descriptor(), &mine) == 0 &&
           stat(path.Path(), &theirs) == 0 && mine.st_dev == theirs.st_dev && mine.st_ino == theirs.st_ino;
}

ssize_t BNode::WriteAttr(const char* name, type_code type, off_t offset, const void* buffer, size_t length)
{
    if (fStatus != B_OK)
        return fStatus;
    if (offset < 0 || (buffer == nullptr && length > 0))
        return B_BAD_VALUE;
    if (length > kits::kMaxAttributeSize || static_cast<size_t>(offset) > kits::kMaxAttributeSize - length)
        return B_DEVICE_FULL;
    kits::Attribute attribute;
    const status_t found = kits::LoadAttribute(Descriptor(), name, &attribute);
    if (found != B_OK && found != B_ENTRY_NOT_FOUND)
        return found;
    attribute.type = type;
    attribute.value.resize(std::max(attribute.value.size(), static_cast<size_t>(offset) + length));
    std::copy_n(static_cast<const uint8*>(buffer), length, attribute.value.begin() + offset);
    const status_t status = kits::StoreAttribute(Descriptor(), name, attribute);
    return status == B_OK ? static_cast<ssize_t>(length) : status;
}

ssize_t BNode::ReadAttr(const char* name, type_code type, off_t offset, void* buffer, size_t length) const
{
    if (fStatus != B_OK)
        return fStatus;
    if (offset < 0 || (buffer == nullptr && length > 0))
        return B_BAD_VALUE;
    kits::Attribute attribute;
    if (const status_t status = kits::LoadAttribute(Descriptor(), name, &attribute); status != B_OK)
        return status;
    if (type != B_ANY_TYPE && type != attribute.type)
        return B_MISMATCHED_VALUES;
    const size_t from = std::min(static_cast<size_t>(offset), attribute.value.size());
    const size_t count = std::min(length, attribute.value.size() - from);
    std::copy_n(attribute.value.begin() + static_cast<off_t>(from), count, static_cast<uint8*>(buffer));
    return static_cast<ssize_t>(count);
}
