// SPDX-License-Identifier: MIT
#include "kits/storage/files/FileCallsPrivate.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>

namespace kits {

namespace {

std::atomic<FailingDevice*> sDevice = nullptr;

/// Makes a call, asking the device before each attempt.
/// @param call  returns -1 and sets errno on failure
/// @return the call's result, or -1 with errno set
template <class Call> int64 Perform(FileAction action, Call call)
{
    FailingDevice* const device = sDevice.load(std::memory_order_acquire);
    const size_t size = action.size;
    for (;;) {
        action.size = size;
        if (device != nullptr) {
            if (const int error = device->Before(action); error != 0) {
                if (error == EINTR)
                    continue;
                errno = error;
                return -1;
            }
        }
        const int64 result = call(action.size);
        const int error = errno;
        if (device != nullptr)
            device->After(action, result);
        if (result >= 0 || error != EINTR) {
            errno = error;
            return result;
        }
    }
}

status_t StatusOf(int64 result)
{
    return result >= 0 ? B_OK : StatusFromErrno(errno);
}

/// Returns whether the error says that the file system has no attributes, or no room for this one.
bool HasNoRoomForAttributes(int error)
{
    return error == ENOTSUP || error == ENOSYS || error == EPERM || error == ENOSPC || error == E2BIG ||
           error == ERANGE || error == EDQUOT;
}

} // namespace

void FailingDevice::After(const FileAction&, int64) {}

FailingDevice* SetFailingDevice(FailingDevice* device)
{
    return sDevice.exchange(device, std::memory_order_acq_rel);
}

status_t OpenFile(const char* path, int flags, FileDescriptor* file, mode_t mode)
{
    const FileAction action{.call = (flags & O_CREAT) != 0 ? FileCall::kCreate : FileCall::kOpen, .path = path};
    const int64 result =
        Perform(action, [&](size_t) { return open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode); });
    if (result >= 0)
        *file = FileDescriptor(static_cast<int>(result));
    return StatusOf(result);
}

ssize_t ReadFileAt(int descriptor, off_t position, void* buffer, size_t size)
{
    size_t done = 0;
    while (done < size) {
        const off_t at = position + static_cast<off_t>(done);
        const FileAction action{.call = FileCall::kRead, .descriptor = descriptor, .size = size - done, .position = at};
        const int64 count = Perform(
            action, [&](size_t bytes) { return pread(descriptor, static_cast<char*>(buffer) + done, bytes, at); });
        if (count < 0)
            return StatusFromErrno(errno);
        if (count == 0)
            break;
        done += static_cast<size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

status_t WriteFileAt(int descriptor, off_t position, const void* buffer, size_t size, size_t* written)
{
    for (*written = 0; *written < size;) {
        const off_t at = position + static_cast<off_t>(*written);
        const char* const from = static_cast<const char*>(buffer) + *written;
        const FileAction action{
            .call = FileCall::kWrite, .descriptor = descriptor, .data = from, .size = size - *written, .position = at};
        const int64 count = Perform(action, [&](size_t bytes) { return pwrite(descriptor, from, bytes, at); });
        if (count < 0)
            return StatusFromErrno(errno);
        if (count == 0)
            return B_IO_ERROR;
        *written += static_cast<size_t>(count);
    }
    return B_OK;
}

status_t TruncateFile(int descriptor, off_t size)
{
    const FileAction action{.call = FileCall::kTruncate, .descriptor = descriptor, .size = static_cast<size_t>(size)};
    return StatusOf(Perform(action, [&](size_t) { return ftruncate(descriptor, size); }));
}

status_t SyncFile(int descriptor)
{
    const FileAction action{.call = FileCall::kSync, .descriptor = descriptor};
    return StatusOf(Perform(action, [&](size_t) { return fsync(descriptor); }));
}

status_t SyncFolder(int descriptor)
{
    const FileAction action{.call = FileCall::kSyncDirectory, .descriptor = descriptor};
    const int64 result = Perform(action, [&](size_t) { return fsync(descriptor); });
    return result < 0 && (errno == EINVAL || errno == ENOTSUP) ? B_OK : StatusOf(result);
}

status_t LockFile(int descriptor)
{
    const FileAction action{.call = FileCall::kLock, .descriptor = descriptor};
    if (Perform(action, [&](size_t) { return flock(descriptor, LOCK_EX | LOCK_NB); }) >= 0)
        return B_OK;
    switch (errno) {
    case EWOULDBLOCK:
        return B_BUSY;
    case ENOLCK:
    case ENOSYS:
    case ENOTSUP:
        return B_OK;
    default:
        return StatusFromErrno(errno);
    }
}

status_t UnlockFile(int descriptor)
{
    const FileAction action{.call = FileCall::kUnlock, .descriptor = descriptor};
    const int64 result = Perform(action, [&](size_t) { return flock(descriptor, LOCK_UN); });
    return result < 0 && (errno == ENOLCK || errno == ENOSYS || errno == ENOTSUP) ? B_OK : StatusOf(result);
}

status_t RenameFile(const char* from, const char* to, bool clobber)
{
    const FileAction action{.call = FileCall::kRename, .path = from, .newPath = to};
    return StatusOf(Perform(action, [&](size_t) -> int {
        if (clobber)
            return rename(from, to);
        if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
            return 0;
        if (errno != EINVAL && errno != ENOSYS)
            return -1;
        // A file system that cannot do both in one step: only another program could take the name in between.
        if (faccessat(AT_FDCWD, to, F_OK, AT_SYMLINK_NOFOLLOW) == 0) {
            errno = EEXIST;
            return -1;
        }
        return errno == ENOENT ? rename(from, to) : -1;
    }));
}

status_t RemoveFile(const char* path)
{
    const FileAction action{.call = FileCall::kRemove, .path = path};
    return StatusOf(Perform(action, [&](size_t) { return remove(path); }));
}

status_t MakeFolder(const char* path)
{
    const FileAction action{.call = FileCall::kMakeDirectory, .path = path};
    return StatusOf(Perform(action, [&](size_t) { return mkdir(path, S_IRWXU); }));
}

ssize_t ReadAttribute(int descriptor, const char* name, void* buffer, size_t size)
{
    const FileAction action{.call = FileCall::kReadAttribute, .descriptor = descriptor, .path = name, .size = size};
    const int64 result = Perform(action, [&](size_t bytes) { return fgetxattr(descriptor, name, buffer, bytes); });
    if (result >= 0)
        return result;
    if (errno == ENODATA)
        return B_ENTRY_NOT_FOUND;
    return HasNoRoomForAttributes(errno) ? B_UNSUPPORTED : StatusFromErrno(errno);
}

status_t WriteAttribute(int descriptor, const char* name, const void* buffer, size_t size)
{
    const FileAction action{
        .call = FileCall::kWriteAttribute, .descriptor = descriptor, .path = name, .data = buffer, .size = size};
    // A part of a value is worthless, so the size is the whole one, whatever the device says.
    if (Perform(action, [&](size_t) { return fsetxattr(descriptor, name, buffer, size, 0); }) >= 0)
        return B_OK;
    return HasNoRoomForAttributes(errno) ? B_UNSUPPORTED : StatusFromErrno(errno);
}

} // namespace kits
