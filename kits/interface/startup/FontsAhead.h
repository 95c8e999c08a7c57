// SPDX-License-Identifier: MIT
#pragma once

#include <thread>

namespace kits {

/// Reads the settings of the system's fonts, a hundred small files, on a thread beside the rest of the start. The
/// toolkit reads them when it measures its first text, which then finds them read. Where it uses other fonts nothing
/// happens.
class FontsAhead {
public:
    /// Nothing may change the environment while this lives.
    FontsAhead();
    /// Waits until they are read.
    ~FontsAhead();
    FontsAhead(const FontsAhead&) = delete;
    FontsAhead& operator=(const FontsAhead&) = delete;

private:
    std::thread fReader;
};

} // namespace kits
