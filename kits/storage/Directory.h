// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"
#include "kits/storage/StorageDefs.h"

#include <string>

class BEntry;

/// An open folder. Not copied.
class BDirectory {
public:
    BDirectory() = default;
    explicit BDirectory(const char* path);
    BDirectory(const BDirectory&) = delete;
    BDirectory& operator=(const BDirectory&) = delete;

    /// @return B_ENTRY_NOT_FOUND, B_NOT_A_DIRECTORY, B_PERMISSION_DENIED, ...; the folder is then unset
    status_t SetTo(const char* path);
    void Unset();
    /// B_NO_INIT for a folder that was never set, otherwise the result of the last SetTo.
    status_t InitCheck() const { return fStatus; }

    /// Creates a folder in it, closed to other users.
    /// @param directory  if not null, set to the new folder
    status_t CreateDirectory(const char* name, BDirectory* directory);

    /// Waits until every name created, changed and removed in the folder is on the disk. B_OK if the file system does
    /// not support this.
    status_t Sync();

    /// The folder's absolute path at the time when it was set; empty if unset.
    const std::string& PathName() const { return fPath; }

private:
    std::string fPath;
    kits::FileDescriptor fFile;
    status_t fStatus = B_NO_INIT;
};
