// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// What the calling thread takes from the heap by `new` while one lives. Not nested.
class AllocationCounter {
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    /// How often something was taken.
    size_t Count() const;
    /// The largest number of bytes that were held at once.
    size_t Peak() const;
};
