// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Counts the memory that the calling thread allocates by `new` while one lives. Not nested.
class AllocationCounter {
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    /// Returns the number of allocations.
    size_t Count() const;
    /// Returns the largest number of bytes held at once.
    size_t Peak() const;
};
