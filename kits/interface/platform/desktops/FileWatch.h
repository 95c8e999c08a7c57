// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"

#include <string>

namespace kits {

/// Reports when any program writes, makes, replaces or removes a file. Its folders may be made later, and may be
/// removed and made again: meanwhile it watches the nearest one that exists. One thread at a time.
class FileWatch {
public:
    /// @param path  absolute; watches nothing if it is empty
    explicit FileWatch(const std::string& path);

    /// Readable when something may have happened.
    int Descriptor() const { return fNotices.Get(); }
    /// Reads the events since the last call; doesn't wait.
    /// @return true if one concerns the file
    bool TakeNews();

private:
    /// Watches the folder of the file, or the nearest folder above it that exists.
    void Arm();
    bool Watch(const std::string& folder, unsigned events);

    const std::string fPath;
    FileDescriptor fNotices;
    int fWatch = -1;         ///< for the watched folder
    std::string fWatched;    ///< the watched folder
    bool fHasFolder = false; ///< it is the file's own folder
};

} // namespace kits
