// SPDX-License-Identifier: MIT
#include "tests/kits/kernel/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

thread_local long long sCount = 0;

} // namespace

long long CountAllocations()
{
    return sCount;
}

void* operator new(size_t size)
{
    ++sCount;
    if (void* memory = std::malloc(size != 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, size_t) noexcept
{
    std::free(memory);
}
