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

/// A folder with `proc/` and `sys/`, with a slash at its end.
/// @param root  null and "" mean "/"
std::string RootFolder(const char* root);

/// A text file of the kernel that is kept open and read from its beginning again and again.
class ProcFile {
public:
    /// Opens it if that is possible now.
    /// @param buffer  where it is read to; what is longer is cut. Not owned. Files that are read one after the other
    /// share
    ///                one, which then stays in the fastest memory.
    ProcFile(std::string path, std::span<char> buffer);

    /// Tries again if it could not be opened, or if reading it failed.
    void Reopen();

    /// What one reading gives, empty if there is nothing. Valid until the buffer is used again. The kernel may give a
    /// long file in pieces: this is the first one.
    /// @param most  reads no more than so many bytes: there are files that the kernel writes line by line, as far as
    /// asked
    [[nodiscard]] std::string_view Read(size_t most = SIZE_MAX);
    /// Appends the next piece and gives all so far; empty if there is none.
    [[nodiscard]] std::string_view ReadOn();

private:
    std::string_view Append(size_t most);

    std::string fPath;
    std::span<char> fBuffer;
    size_t fSize = 0;
    FileDescriptor fFile;
};

} // namespace kits
