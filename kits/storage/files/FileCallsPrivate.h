// SPDX-License-Identifier: MIT
#pragma once

#include "kits/storage/files/FileCalls.h"

/// The system's calls as the storage kit uses them: each goes through the failing device, goes on when it is
/// interrupted, and returns a status instead of setting errno.

namespace kits {

/// Never waits for the other end of a pipe, and the descriptor does not survive exec.
/// @param flags  of open(2)
/// @param mode   of a file that is made, less the process's mask; for the user alone by default
/// @return a descriptor or a status
int32 OpenFile(const char* path, int flags, mode_t mode = 0600);
void CloseFile(int descriptor);

/// Reads until the buffer is full or the file ends.
/// @return bytes read or a status
ssize_t ReadFileAt(int descriptor, off_t position, void* buffer, size_t size);
/// Writes everything.
/// @param written  set to the bytes that were written, also after an error
status_t WriteFileAt(int descriptor, off_t position, const void* buffer, size_t size, size_t* written);
status_t TruncateFile(int descriptor, off_t size);
status_t SyncFile(int descriptor);
/// B_OK too where the file system has no way to sync a folder.
status_t SyncFolder(int descriptor);

/// @return B_BUSY when another open file has the lock; B_OK too where the file system has no locks
status_t LockFile(int descriptor);
status_t UnlockFile(int descriptor);

/// @param clobber  without it, B_FILE_EXISTS when the new name is taken
status_t RenameFile(const char* from, const char* to, bool clobber);
/// Removes a file, a link or an empty folder.
status_t RemoveFile(const char* path);
/// Makes a folder for the user alone.
status_t MakeFolder(const char* path);

/// @return bytes of the value or a status; B_UNSUPPORTED when the file system can't hold it
ssize_t ReadAttribute(int descriptor, const char* name, void* buffer, size_t size);
status_t WriteAttribute(int descriptor, const char* name, const void* buffer, size_t size);

} // namespace kits
