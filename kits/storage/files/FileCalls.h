// SPDX-License-Identifier: MIT
#pragma once

#include "kits/storage/StorageDefs.h"

/// All calls of the storage kit that open, read, write, lock, rename or remove go through here, so that a test can
/// simulate a disk that is full, fails or loses power at any of them.

namespace kits {

enum class FileCall : uint8 {
    kOpen,
    kCreate, ///< opens and may create the file
    kRead,
    kWrite,
    kTruncate,
    kSync,
    kSyncDirectory,
    kLock,
    kUnlock,
    kRename,
    kRemove,
    kMakeDirectory,
    kReadAttribute,
    kWriteAttribute,
};

/// A call that is about to be made. Fields that do not apply to a call are null, -1 or 0.
struct FileAction {
    FileCall call;
    int descriptor = -1;
    const char* path = nullptr;
    const char* newPath = nullptr;
    const void* data = nullptr; ///< the bytes to write
    size_t size = 0;            ///< bytes to read or write; the new size for kTruncate
    off_t position = 0;
};

/// A disk that fails on demand. Called by the threads that use the storage kit, concurrently if they do so.
class FailingDevice {
public:
    virtual ~FailingDevice() = default;

    /// Called before each call.
    /// @param action  its size may be lowered (to 1 or more) so that only a part is read or written
    /// @return 0 to permit it, otherwise the error number with which it fails
    virtual int Before(FileAction& action) = 0;
    /// Called after a permitted call.
    /// @param result  the system's result: -1 for a failure
    virtual void After(const FileAction& action, int64 result);
};

/// For tests: replaces the device; null restores the plain disk. Not while other threads use the storage kit.
/// @param device  not owned; must outlive its use
/// @return the previous one
FailingDevice* SetFailingDevice(FailingDevice* device);

} // namespace kits
