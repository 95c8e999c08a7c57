#pragma once

#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/Types.h"

#include <memory>
#include <string>
#include <string_view>

namespace kits {

/// A text file of the kernel that is kept open and read from its beginning again and again, into one buffer.
class ProcFile {
public:
    /// Opens it if that is possible now.
    /// @param capacity  of the buffer; what is longer is cut
    ProcFile(std::string path, size_t capacity);

    /// Tries again if it could not be opened, or if reading it failed.
    void Reopen();

    /// What one reading gives, empty if there is nothing. Valid until the next call. The kernel may give a long file in
    /// pieces: this is the first one.
    [[nodiscard]] std::string_view Read();
    /// Appends the next piece and gives all so far; empty if there is none.
    [[nodiscard]] std::string_view ReadOn();

private:
    bool Append();

    std::string fPath;
    size_t fCapacity;
    std::unique_ptr<char[]> fBuffer;
    size_t fSize = 0;
    FileDescriptor fFile;
};

} // namespace kits
