// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <sys/types.h>

/// A source and destination of bytes, in order. Not for two threads at once.
class BDataIO {
public:
    BDataIO() = default;
    virtual ~BDataIO() = default;
    BDataIO(const BDataIO&) = delete;
    BDataIO& operator=(const BDataIO&) = delete;

    /// @return the number of bytes read, fewer than requested at the end, 0 at the very end, or a status code
    virtual ssize_t Read(void* buffer, size_t size) = 0;
    /// @return the number of bytes written, or a status code
    virtual ssize_t Write(const void* buffer, size_t size) = 0;
};
