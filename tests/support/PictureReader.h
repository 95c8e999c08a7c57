// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/PictureFile.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/// Makes the kits read pictures with the program of this build, as long as an object lives. Test programs lie in
/// folders below that program's.
class BuiltPictureReader {
public:
    BuiltPictureReader() { Use(); }
    ~BuiltPictureReader() { kits::SetPictureReader(""); }
    BuiltPictureReader(const BuiltPictureReader&) = delete;
    BuiltPictureReader& operator=(const BuiltPictureReader&) = delete;

    /// Uses it from now on, and forgets pictures that were read.
    void Use() const { kits::SetPictureReader(Program()); }

    static std::string Program()
    {
        std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
        while (access((folder / "average-picture").c_str(), X_OK) != 0) {
            // The program is not built, though every program that includes this header depends on it.
            if (folder == folder.parent_path())
                std::abort();
            folder = folder.parent_path();
        }
        return (folder / "average-picture").string();
    }
};
