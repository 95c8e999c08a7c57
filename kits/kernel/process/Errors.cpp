// SPDX-License-Identifier: MIT
#include "kits/kernel/Errors.h"

#include <cerrno>

namespace kits {

namespace {

struct ErrnoStatus {
    int error;
    status_t status;
};

constexpr ErrnoStatus kErrnoStatuses[] = {
    {0, B_OK},
    {ENOMEM, B_NO_MEMORY},
    {EIO, B_IO_ERROR},
    {EPERM, B_PERMISSION_DENIED},
    {EACCES, B_PERMISSION_DENIED},
    {EINVAL, B_BAD_VALUE},
    {EBADF, B_FILE_ERROR},
    {ETIMEDOUT, B_TIMED_OUT},
    {EINTR, B_INTERRUPTED},
    {EAGAIN, B_WOULD_BLOCK},
    {ECANCELED, B_CANCELED},
    {EBUSY, B_BUSY},
    {ENOENT, B_ENTRY_NOT_FOUND},
    {EEXIST, B_FILE_EXISTS},
    {ENAMETOOLONG, B_NAME_TOO_LONG},
    {ENOTDIR, B_NOT_A_DIRECTORY},
    {ENOTEMPTY, B_DIRECTORY_NOT_EMPTY},
    {ENOSPC, B_DEVICE_FULL},
    {EDQUOT, B_DEVICE_FULL},
    {EFBIG, B_DEVICE_FULL},
    {EROFS, B_READ_ONLY_DEVICE},
    {EISDIR, B_IS_A_DIRECTORY},
    {EMFILE, B_NO_MORE_FDS},
    {ENFILE, B_NO_MORE_FDS},
    {EXDEV, B_CROSS_DEVICE_LINK},
    {ELOOP, B_LINK_LIMIT},
    {ENOTSUP, B_UNSUPPORTED},
    {ENOSYS, B_UNSUPPORTED},
};

struct StatusName {
    status_t status;
    const char* text;
};

constexpr StatusName kStatusNames[] = {
    {B_OK, "No error"},
    {B_ERROR, "General error"},
    {B_NO_MEMORY, "Out of memory"},
    {B_IO_ERROR, "Input or output error"},
    {B_PERMISSION_DENIED, "Permission denied"},
    {B_BAD_INDEX, "Index out of range"},
    {B_BAD_TYPE, "Wrong type"},
    {B_BAD_VALUE, "Invalid value"},
    {B_MISMATCHED_VALUES, "Values do not fit together"},
    {B_NAME_NOT_FOUND, "Name not found"},
    {B_TIMED_OUT, "Timed out"},
    {B_INTERRUPTED, "Interrupted"},
    {B_WOULD_BLOCK, "Would have to wait"},
    {B_CANCELED, "Cancelled"},
    {B_NO_INIT, "Not initialised"},
    {B_BUSY, "Busy"},
    {B_NOT_ALLOWED, "Not allowed"},
    {B_BAD_THREAD_ID, "No such thread"},
    {B_BAD_THREAD_STATE, "The thread is not in a state for this"},
    {B_NO_MORE_THREADS, "No more threads available"},
    {B_BAD_REPLY, "Invalid reply"},
    {B_DUPLICATE_REPLY, "Replied to already"},
    {B_BAD_HANDLER, "No such handler"},
    {B_ALREADY_RUNNING, "Already running"},
    {B_LAUNCH_FAILED, "Launching failed"},
    {B_FILE_ERROR, "File not usable"},
    {B_FILE_NOT_FOUND, "File not found"},
    {B_FILE_EXISTS, "File exists"},
    {B_ENTRY_NOT_FOUND, "Not found"},
    {B_NAME_TOO_LONG, "Name too long"},
    {B_NOT_A_DIRECTORY, "Not a folder"},
    {B_DIRECTORY_NOT_EMPTY, "Folder not empty"},
    {B_DEVICE_FULL, "No space left"},
    {B_READ_ONLY_DEVICE, "Only reading is possible there"},
    {B_IS_A_DIRECTORY, "Is a folder"},
    {B_NO_MORE_FDS, "Too many open files"},
    {B_CROSS_DEVICE_LINK, "Not on the same file system"},
    {B_LINK_LIMIT, "Too many links"},
    {B_UNSUPPORTED, "Not supported"},
};

} // namespace

status_t StatusFromErrno(int error) noexcept
{
    for (const ErrnoStatus& entry : kErrnoStatuses)
        if (entry.error == error)
            return entry.status;
    return B_ERROR;
}

const char* StatusText(status_t status) noexcept
{
    for (const StatusName& entry : kStatusNames)
        if (entry.status == status)
            return entry.text;
    return status < 0 ? "Unknown error" : "No error";
}

} // namespace kits
