// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/PictureFile.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/// Has pictures read by the program that was built, for as long as one lives: test programs lie in folders of their
/// own, below that of the program.
class BuiltPictureReader {
public:
    BuiltPictureReader() { Use(); }
    ~BuiltPictureReader() { kits::SetPictureReader(""); }
    BuiltPictureReader(const BuiltPictureReader&) = delete;
    BuiltPictureReader& operator=(const BuiltPictureReader&) = delete;

    /// Uses it from here on, and has every picture read again.
    void Use() const { kits::SetPictureReader(Program()); }

    static std::string Program()
    {
        std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
        while (access((folder / "average-picture").c_str(), X_OK) != 0) {
            // Not built, though every program that includes this depends on it.
            if (folder == folder.parent_path())
                std::abort();
            folder = folder.parent_path();
        }
        return (folder / "average-picture").string();
    }
};
