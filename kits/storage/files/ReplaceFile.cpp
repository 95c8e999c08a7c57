// SPDX-License-Identifier: MIT
#include "kits/storage/ReplaceFile.h"

#include "kits/storage/Entry.h"
#include "kits/storage/files/FileCallsPrivate.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string>

namespace kits {

namespace {

constexpr int kNamesTried = 100;

status_t WriteInPlace(const char* path, const void* data, size_t size)
{
    FileDescriptor file;
    if (const status_t status = OpenFile(path, O_WRONLY, &file); status != B_OK)
        return status;
    const char* bytes = static_cast<const char*>(data);
    while (size > 0) {
        // A pipe has no positions.
        const ssize_t count = write(file.Get(), bytes, size);
        if (count < 0 && errno != EINTR)
            return StatusFromErrno(errno);
        if (count > 0) {
            bytes += count;
            size -= static_cast<size_t>(count);
        }
    }
    return B_OK;
}

/// Writes the new bytes under another name in the same folder.
status_t WriteBeside(const std::string& path, const struct stat* old, const void* data, size_t size)
{
    FileDescriptor file;
    status_t status = OpenFile(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, &file, 0666);
    if (status == B_OK && old != nullptr && fchmod(file.Get(), old->st_mode & 07777) != 0)
        status = StatusFromErrno(errno);
    size_t written = 0;
    if (status == B_OK)
        status = WriteFileAt(file.Get(), 0, data, size, &written);
    return status == B_OK ? SyncFile(file.Get()) : status;
}

status_t SyncFolderAt(const std::string& path)
{
    FileDescriptor folder;
    // The folder may be writable but not readable.
    return OpenFile(path.c_str(), O_RDONLY | O_DIRECTORY, &folder) == B_OK ? SyncFolder(folder.Get()) : B_OK;
}

} // namespace

status_t ReplaceFile(const char* path, const void* data, size_t size)
{
    struct stat info {};
    const bool exists = path != nullptr && stat(path, &info) == 0;
    if (exists && S_ISDIR(info.st_mode))
        return B_IS_A_DIRECTORY;
    if (exists && !S_ISREG(info.st_mode))
        return WriteInPlace(path, data, size);

    entry_ref target;
    status_t status = BEntry(path, true).GetRef(&target);
    if (status != B_OK)
        return status;
    static std::atomic<unsigned> sNumber{0};
    const std::string start = target.directory + "/.new-" + std::to_string(getpid()) + "-";
    std::string beside;
    // A killed process with the same id has left this file.
    status = B_FILE_EXISTS;
    for (int attempt = 0; status == B_FILE_EXISTS && attempt < kNamesTried; attempt++) {
        beside = start + std::to_string(sNumber.fetch_add(1));
        status = WriteBeside(beside, exists ? &info : nullptr, data, size);
    }
    if (status == B_OK)
        status = RenameFile(beside.c_str(), (target.directory + "/" + target.name).c_str(), true);
    if (status == B_OK)
        return SyncFolderAt(target.directory);
    if (status != B_FILE_EXISTS)
        RemoveFile(beside.c_str());
    return status;
}

} // namespace kits
