// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <sys/types.h>

/// Where bytes are read from and written to, in order. Not for two threads at once.
class BDataIO {
public:
    BDataIO() = default;
    virtual ~BDataIO() = default;
    BDataIO(const BDataIO&) = delete;
    BDataIO& operator=(const BDataIO&) = delete;

    /// @return how many bytes were read, fewer than asked for at the end, 0 there, or a status code
    virtual ssize_t Read(void* buffer, size_t size) = 0;
    /// @return how many bytes were written, or a status code
    virtual ssize_t Write(const void* buffer, size_t size) = 0;
};
