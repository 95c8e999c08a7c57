// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"
#include "kits/storage/files/FileCalls.h"

/// The system's calls as the storage kit uses them: each goes through the failing device, continues after an
/// interruption, and returns a status instead of setting errno.

namespace kits {

/// Never waits for the other end of a pipe; exec closes the descriptor.
/// @param flags  of open(2)
/// @param file   set to the open file; unchanged after an error
/// @param mode   of a created file, less the process's mask; by default for the user alone
status_t OpenFile(const char* path, int flags, FileDescriptor* file, mode_t mode = 0600);

/// Reads until the buffer is full or the file ends.
/// @return bytes read or a status
ssize_t ReadFileAt(int descriptor, off_t position, void* buffer, size_t size);
/// Writes everything.
/// @param written  set to the number of bytes written, even after an error
status_t WriteFileAt(int descriptor, off_t position, const void* buffer, size_t size, size_t* written);
status_t TruncateFile(int descriptor, off_t size);
status_t SyncFile(int descriptor);
/// Returns B_OK even if the file system cannot sync a folder.
status_t SyncFolder(int descriptor);

/// @return B_BUSY if another open file has the lock; B_OK also if the file system has no locks
status_t LockFile(int descriptor);
status_t UnlockFile(int descriptor);

/// @param clobber  without it, B_FILE_EXISTS if the new name is taken
status_t RenameFile(const char* from, const char* to, bool clobber);
/// Removes a file, a link or an empty folder.
status_t RemoveFile(const char* path);
/// Creates a folder for the user alone.
status_t MakeFolder(const char* path);

/// @return bytes of the value or a status; B_UNSUPPORTED if the file system cannot hold it
ssize_t ReadAttribute(int descriptor, const char* name, void* buffer, size_t size);
status_t WriteAttribute(int descriptor, const char* name, const void* buffer, size_t size);

} // namespace kits
