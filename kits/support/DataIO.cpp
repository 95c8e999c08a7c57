// SPDX-License-Identifier: MIT
#include "kits/support/DataIO.h"

#include <algorithm>
#include <cstring>
#include <new>

ssize_t BPositionIO::Read(void* buffer, size_t size)
{
    const ssize_t count = ReadAt(Position(), buffer, size);
    if (count > 0)
        Seek(count, B_SEEK_CURRENT);
    return count;
}

ssize_t BPositionIO::Write(const void* buffer, size_t size)
{
    const ssize_t count = WriteAt(Position(), buffer, size);
    if (count > 0)
        Seek(count, B_SEEK_CURRENT);
    return count;
}

ssize_t BMallocIO::ReadAt(off_t position, void* buffer, size_t size)
{
    if (position < 0 || (buffer == nullptr && size > 0))
        return B_BAD_VALUE;
    const auto at = static_cast<size_t>(position);
    if (at >= fBytes.size() || size == 0)
        return 0;
    const size_t count = std::min(size, fBytes.size() - at);
    memcpy(buffer, fBytes.data() + at, count);
    return static_cast<ssize_t>(count);
}

ssize_t BMallocIO::WriteAt(off_t position, const void* buffer, size_t size)
{
    if (position < 0 || (buffer == nullptr && size > 0))
        return B_BAD_VALUE;
    if (size == 0)
        return 0;
    const auto at = static_cast<size_t>(position);
    if (position > kLargestSize || size > static_cast<size_t>(kLargestSize - position))
        return B_NO_MEMORY;
    if (at + size > fBytes.size()) {
        if (const status_t status = SetSize(static_cast<off_t>(at + size)); status != B_OK)
            return status;
    }
    memcpy(fBytes.data() + at, buffer, size);
    return static_cast<ssize_t>(size);
}

off_t BMallocIO::Seek(off_t offset, uint32 from)
{
    off_t base = 0;
    if (from == B_SEEK_CURRENT)
        base = fPosition;
    else if (from == B_SEEK_END)
        base = static_cast<off_t>(fBytes.size());
    else if (from != B_SEEK_BEGIN)
        return B_BAD_VALUE;
    off_t position;
    if (__builtin_add_overflow(base, offset, &position) || position < 0)
        return B_BAD_VALUE;
    return fPosition = position;
}

status_t BMallocIO::SetSize(off_t size)
{
    if (size < 0)
        return B_BAD_VALUE;
    if (size > kLargestSize)
        return B_NO_MEMORY;
    try {
        fBytes.resize(static_cast<size_t>(size));
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
    return B_OK;
}

status_t BMallocIO::GetSize(off_t* size) const
{
    if (size == nullptr)
        return B_BAD_VALUE;
    *size = static_cast<off_t>(fBytes.size());
    return B_OK;
}
