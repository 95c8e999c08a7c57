// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"

#include <string>

namespace kits {

/// Tells when a file is written, made, replaced or removed, by whoever does it. The folders that it lies in may come
/// later, and may go and come back: the nearest one that is there is watched meanwhile. One thread at a time.
class FileWatch {
public:
    /// @param path  absolute; watches nothing when it is empty
    explicit FileWatch(const std::string& path);

    /// Readable when something may have happened.
    int Descriptor() const { return fNotices.Get(); }
    /// Takes in what has happened since; doesn't wait.
    /// @return whether it concerns the file
    bool TakeNews();

private:
    /// Watches the folder of the file, or as much of the way to it as there is.
    void Arm();
    bool Watch(const std::string& folder, unsigned events);

    const std::string fPath;
    FileDescriptor fNotices;
    int fWatch = -1;         ///< of the folder that is watched now
    std::string fWatched;    ///< that folder
    bool fHasFolder = false; ///< it is the one that the file lies in
};

} // namespace kits
