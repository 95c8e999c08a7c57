// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/ProcText.h"
#include "kits/kernel/Types.h"

#include <mutex>
#include <optional>
#include <string_view>

namespace kits {

/// A count of the machine and its maximum.
struct Figure {
    int64 count = 0;   ///< from 0 to `maximum`
    int64 maximum = 1; ///< at least 1

    bool operator==(const Figure&) const = default;
};

/// Holds both numbers to their ranges: a count above the maximum becomes the maximum.
[[nodiscard]] Figure HoldToRange(const Figure& figure);

/// A file of the kernel with one figure that is not in `system_info`. The file stays open and is read from its
/// beginning each time; if it cannot be opened, the next reading tries again. Any thread.
class FigureFile {
public:
    /// Finds the figure in the text of the file (see kits/kernel/ProcText.h), which may be truncated anywhere. Returns
    /// nothing if it is not there.
    using Parser = std::optional<Figure> (*)(std::string_view text);

    /// @param path  below the root of the machine, which is "/" or the folder in KITS_ROOT: "proc/sys/fs/file-nr"; not
    ///              copied. Reads the first 4096 bytes of the file.
    FigureFile(const char* path, Parser parse)
        : fPath(path)
        , fParse(parse)
    {
    }

    /// Returns the current figure, held to its range; if it cannot be read, that of the last reading, initially 0 of 1.
    Figure Read();

private:
    const char* const fPath;
    const Parser fParse;
    std::mutex fLock; ///< guards the members below
    FileDescriptor fFile;
    Figure fLast;
};

} // namespace kits
