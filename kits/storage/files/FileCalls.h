// SPDX-License-Identifier: MIT
#pragma once

#include "kits/storage/StorageDefs.h"

/// Every call of the storage kit that opens, reads, writes, locks, renames or removes goes through here, so that a test
/// can stand in for a disk that is full, fails or loses power at any of them.

namespace kits {

enum class FileCall : uint8 {
    kOpen,
    kCreate, ///< opens and may make the file
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

/// A call that is about to be made. Fields that a call does not have are null, -1 or 0.
struct FileAction {
    FileCall call;
    int descriptor = -1;
    const char* path = nullptr;
    const char* newPath = nullptr;
    const void* data = nullptr; ///< what is written
    size_t size = 0;            ///< bytes to read or write; the new size for kTruncate
    off_t position = 0;
};

/// A disk that fails when told. Called by the threads that use the storage kit, at the same time when they do.
class FailingDevice {
public:
    virtual ~FailingDevice() = default;

    /// Asked before a call is made.
    /// @param action  its size may be lowered (to 1 or more) to have only a part read or written
    /// @return 0 to let it happen, else the error number that it fails with
    virtual int Before(FileAction& action) = 0;
    /// Told after a call that was let through.
    /// @param result  what the system returned: -1 for a failure
    virtual void After(const FileAction& action, int64 result);
};

/// Puts a device in place of the one before, null for the plain disk. Not while other threads use the storage kit.
/// @param device  not owned; must outlive its use
/// @return the one before
FailingDevice* SetFailingDevice(FailingDevice* device);

} // namespace kits
