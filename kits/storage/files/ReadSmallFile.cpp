// SPDX-License-Identifier: MIT
#include "kits/storage/ReadSmallFile.h"

#include "kits/storage/files/FileCallsPrivate.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace kits {

std::optional<std::string> ReadSmallFile(const std::string& path, size_t most)
{
    FileDescriptor file;
    struct stat info;
    if (OpenFile(path.c_str(), O_RDONLY, &file) != B_OK || fstat(file.Get(), &info) != 0 || !S_ISREG(info.st_mode) ||
        static_cast<size_t>(info.st_size) > most)
        return std::nullopt;
    // One byte more reveals a file that grows meanwhile.
    std::string text(static_cast<size_t>(info.st_size) + 1, '\0');
    const ssize_t count = ReadFileAt(file.Get(), 0, text.data(), text.size());
    if (count < 0 || static_cast<size_t>(count) > most)
        return std::nullopt;
    text.resize(static_cast<size_t>(count));
    return text;
}

} // namespace kits
