// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/DataIO.h"

#include <string>

namespace test {

/// Bytes in memory: written at their end, and read from their beginning on.
class MemoryStream : public BDataIO {
public:
    ssize_t Read(void* buffer, size_t size) override
    {
        const size_t count = bytes.copy(static_cast<char*>(buffer), size, position);
        position += count;
        return static_cast<ssize_t>(count);
    }
    ssize_t Write(const void* buffer, size_t size) override
    {
        bytes.append(static_cast<const char*>(buffer), size);
        return static_cast<ssize_t>(size);
    }

    std::string bytes;
    size_t position = 0; ///< of the next byte to be read
};

} // namespace test
