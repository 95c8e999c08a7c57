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

BFile::BFile(const entry_ref* ref, uint32 openMode)
{
    SetTo(ref, openMode);
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

status_t BFile::SetTo(const entry_ref* ref, uint32 openMode)
{
    const BEntry entry(ref);
    return SetTo(&entry, openMode);
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
    const ssize_t count = ReadAt(fPosition, buffer, size);
    if (count > 0)
        fPosition += count;
    return count;
}

ssize_t BFile::ReadAt(off_t position, void* buffer, size_t size)
{
    if (InitCheck() != B_OK)
        return InitCheck();
    if (position < 0 || (buffer == nullptr && size > 0))
        return B_BAD_VALUE;
    return IsReadable() ? kits::ReadFileAt(Descriptor(), position, buffer, size) : B_NOT_ALLOWED;
}

ssize_t BFile::Write(const void* buffer, size_t size)
{
    size_t written = 0;
    const status_t status = WriteTo(fPosition, buffer, size, &written);
    fPosition += static_cast<off_t>(written);
    return status == B_OK ? static_cast<ssize_t>(written) : status;
}

ssize_t BFile::WriteAt(off_t position, const void* buffer, size_t size)
{
    size_t written = 0;
    const status_t status = WriteTo(position, buffer, size, &written);
    return status == B_OK ? static_cast<ssize_t>(written) : status;
}

status_t BFile::WriteTo(off_t position, const void* buffer, size_t size, size_t* written)
{
    if (InitCheck() != B_OK)
        return InitCheck();
    if (position < 0 || (buffer == nullptr && size > 0))
        return B_BAD_VALUE;
    return IsWritable() ? kits::WriteFileAt(Descriptor(), position, buffer, size, written) : B_NOT_ALLOWED;
}

off_t BFile::Seek(off_t offset, uint32 from)
{
    if (InitCheck() != B_OK)
        return InitCheck();
    off_t base = 0;
    if (from == B_SEEK_CURRENT) {
        base = fPosition;
    } else if (from == B_SEEK_END) {
        if (const status_t status = GetSize(&base); status != B_OK)
            return status;
    } else if (from != B_SEEK_BEGIN) {
        return B_BAD_VALUE;
    }
    off_t position = 0;
    if (__builtin_add_overflow(base, offset, &position) || position < 0)
        return B_BAD_VALUE;
    return fPosition = position;
}

status_t BFile::SetSize(off_t size)
{
    if (InitCheck() != B_OK)
        return InitCheck();
    if (size < 0)
        return B_BAD_VALUE;
    return IsWritable() ? kits::TruncateFile(Descriptor(), size) : B_NOT_ALLOWED;
}

status_t BFile::GetSize(off_t* size) const
{
    return BNode::GetSize(size);
}
