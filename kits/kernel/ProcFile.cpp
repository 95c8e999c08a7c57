#include "kits/kernel/ProcFile.h"

#include <fcntl.h>
#include <unistd.h>

namespace kits {

ProcFile::ProcFile(std::string path, size_t capacity)
    : fPath(std::move(path))
    , fCapacity(capacity)
    , fBuffer(std::make_unique_for_overwrite<char[]>(capacity))
{
    Reopen();
}

void ProcFile::Reopen()
{
    if (!fFile.IsOpen())
        fFile = FileDescriptor(open(fPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
}

std::string_view ProcFile::Read()
{
    fSize = 0;
    return ReadOn();
}

std::string_view ProcFile::ReadOn()
{
    return Append() ? std::string_view(fBuffer.get(), fSize) : std::string_view();
}

bool ProcFile::Append()
{
    if (!fFile.IsOpen() || fSize == fCapacity)
        return false;
    const ssize_t count = pread(fFile.Get(), fBuffer.get() + fSize, fCapacity - fSize, static_cast<off_t>(fSize));
    if (count < 0)
        fFile.Close();
    if (count <= 0)
        return false;
    fSize += static_cast<size_t>(count);
    return true;
}

} // namespace kits
