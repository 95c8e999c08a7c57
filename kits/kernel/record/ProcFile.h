// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/Types.h"

#include <span>
#include <string>
#include <string_view>

namespace kits {

/// The environment variable that names a recorded machine.
inline constexpr const char* kRootVariable = "KITS_ROOT";

/// Returns a folder with `proc/` and `sys/`, with a slash at its end.
/// @param root  null and "" mean "/"
std::string RootFolder(const char* root);

/// A text file of the kernel that is kept open and read from its beginning each time.
class ProcFile {
public:
    /// Opens it if that is possible now.
    /// @param buffer  receives the text, which is cut to its size. Not owned. Files that are read one after the other
    ///                share one buffer, which then stays in the fastest memory.
    ProcFile(std::string path, std::span<char> buffer);

    /// Opens it again if it could not be opened, or if reading it failed.
    void Reopen();

    /// Reads the file from its beginning. The kernel may give a long file in pieces: this is the first one.
    /// @param most  the largest number of bytes to read; the kernel writes some files only as far as they are read
    /// @return the text, valid until the buffer is used again; empty if there is none
    [[nodiscard]] std::string_view Read(size_t most = SIZE_MAX);
    /// Appends the next piece and returns all pieces so far; empty if there is no next one.
    [[nodiscard]] std::string_view ReadOn();

private:
    std::string_view Append(size_t most);

    std::string fPath;
    std::span<char> fBuffer;
    size_t fSize = 0;
    FileDescriptor fFile;
};

} // namespace kits
