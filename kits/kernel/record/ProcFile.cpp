// SPDX-License-Identifier: MIT
#include "kits/kernel/record/ProcFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace kits {

std::string RootFolder(const char* root)
{
    std::string folder = root != nullptr ? root : "";
    if (!folder.ends_with('/'))
        folder += '/';
    return folder;
}

ProcFile::ProcFile(std::string path, std::span<char> buffer)
    : fPath(std::move(path))
    , fBuffer(buffer)
{
    Reopen();
}

void ProcFile::Reopen()
{
    if (!fFile.IsOpen())
        fFile = FileDescriptor(open(fPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
}

std::string_view ProcFile::Read(size_t most)
{
    fSize = 0;
    return Append(most);
}

std::string_view ProcFile::ReadOn()
{
    return Append(SIZE_MAX);
}

std::string_view ProcFile::Append(size_t most)
{
    const size_t room = std::min(fBuffer.size() - fSize, most);
    if (!fFile.IsOpen() || room == 0)
        return {};
    const ssize_t count = pread(fFile.Get(), fBuffer.data() + fSize, room, static_cast<off_t>(fSize));
    if (count < 0)
        fFile.Close();
    if (count <= 0)
        return {};
    fSize += static_cast<size_t>(count);
    return {fBuffer.data(), fSize};
}

} // namespace kits
