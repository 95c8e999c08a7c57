// SPDX-License-Identifier: MIT
#include "kits/storage/ReadSmallFile.h"

#include "kits/storage/files/FileCallsPrivate.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace kits {

std::optional<std::string> ReadSmallFile(const std::string& path, size_t most)
{
    const int32 file = OpenFile(path.c_str(), O_RDONLY);
    if (file < 0)
        return std::nullopt;
    struct stat info;
    std::optional<std::string> text;
    if (fstat(file, &info) == 0 && S_ISREG(info.st_mode) && static_cast<size_t>(info.st_size) <= most) {
        // One byte more reveals a file that grows meanwhile.
        text.emplace(static_cast<size_t>(info.st_size) + 1, '\0');
        const ssize_t count = ReadFileAt(file, 0, text->data(), text->size());
        if (count < 0 || static_cast<size_t>(count) > most)
            text.reset();
        else
            text->resize(static_cast<size_t>(count));
    }
    CloseFile(file);
    return text;
}

} // namespace kits
