// SPDX-License-Identifier: MIT
#include "kits/kernel/FigureFile.h"

#include "kits/kernel/record/ProcFile.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kits {

Figure HoldToRange(const Figure& figure)
{
    const int64 maximum = std::max<int64>(figure.maximum, 1);
    return {std::clamp<int64>(figure.count, 0, maximum), maximum};
}

Figure FigureFile::Read()
{
    const std::lock_guard lock(fLock);
    if (!fFile.IsOpen()) {
        const std::string path = RootFolder(std::getenv(kRootVariable)) + fPath;
        fFile = FileDescriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    }
    std::array<char, 4096> text;
    const ssize_t length = pread(fFile.Get(), text.data(), text.size(), 0);
    if (length < 0)
        fFile.Close();
    else if (const std::optional<Figure> figure = fParse({text.data(), static_cast<size_t>(length)}))
        fLast = HoldToRange(*figure);
    return fLast;
}

} // namespace kits
