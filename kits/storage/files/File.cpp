// SPDX-License-Identifier: MIT
#include "kits/storage/File.h"

#include "kits/storage/Entry.h"
#include "kits/storage/Path.h"
#include "kits/storage/files/FileCallsPrivate.h"

#include <sys/stat.h>

#include <cerrno>

BFile::BFile(const char* path, uint32 openMode)
{
    SetTo(path, openMode);
}

BFile::BFile(const BEntry* entry, uint32 openMode)
{
    SetTo(entry, openMode);
}

status_t BFile::SetTo(const char* path, uint32 openMode)
{
    if (const status_t status = OpenPath(path, openMode); status != B_OK)
        return status;
    struct stat info;
    if (fstat(Descriptor(), &info) != 0)
        return Fail(kits::StatusFromErrno(errno));
    if (S_ISDIR(info.st_mode))
        return Fail(B_IS_A_DIRECTORY);
    fOpenMode = openMode;
    return B_OK;
}

status_t BFile::SetTo(const BEntry* entry, uint32 openMode)
{
    const BPath path(entry);
    return path.InitCheck() == B_OK ? SetTo(path.Path(), openMode) : Fail(path.InitCheck());
}

void BFile::Unset()
{
    BNode::Unset();
    fOpenMode = 0;
    fPosition = 0;
}

bool BFile::IsReadable() const
{
    return InitCheck() == B_OK && (fOpenMode & 3) != B_WRITE_ONLY;
}

bool BFile::IsWritable() const
{
    return InitCheck() == B_OK && (fOpenMode & 3) != B_READ_ONLY;
}

ssize_t BFile::Read(void* buffer, size_t size)
{
    if (InitCheck() != B_OK)
        return InitCheck();
    if (buffer == nullptr && size > 0)
        return B_BAD_VALUE;
    const ssize_t count = IsReadable() ? kits::ReadFileAt(Descriptor(), fPosition, buffer, size) : B_NOT_ALLOWED;
    if (count > 0)
        fPosition += count;
    return count;
}

ssize_t BFile::Write(const void* buffer, size_t size)
{
    if (InitCheck() != B_OK)
        return InitCheck();
    if (buffer == nullptr && size > 0)
        return B_BAD_VALUE;
    if (!IsWritable())
        return B_NOT_ALLOWED;
    size_t written = 0;
    const status_t status = kits::WriteFileAt(Descriptor(), fPosition, buffer, size, &written);
    fPosition += static_cast<off_t>(written);
    return status == B_OK ? static_cast<ssize_t>(written) : status;
}

status_t BFile::SetSize(off_t size)
{
    if (InitCheck() != B_OK)
        return InitCheck();
    if (size < 0)
        return B_BAD_VALUE;
    return IsWritable() ? kits::TruncateFile(Descriptor(), size) : B_NOT_ALLOWED;
}
