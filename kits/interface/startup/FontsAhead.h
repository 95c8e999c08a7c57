// SPDX-License-Identifier: MIT
#pragma once

#include <thread>

namespace kits {

/// Reads the settings of the system's fonts, a hundred small files, on a thread beside the rest of the start. The
/// toolkit reads them when it measures its first text, and then finds them cached. Does nothing if the toolkit uses
/// other fonts.
class FontsAhead {
public:
    /// Nothing may change the environment while this object lives.
    FontsAhead();
    /// Waits until they are read.
    ~FontsAhead();
    FontsAhead(const FontsAhead&) = delete;
    FontsAhead& operator=(const FontsAhead&) = delete;

private:
    std::thread fReader;
};

} // namespace kits
