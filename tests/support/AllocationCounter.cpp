// SPDX-License-Identifier: MIT
#include "tests/support/AllocationCounter.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

struct Tally {
    bool isCounting = false;
    size_t count = 0;
    size_t held = 0;
    size_t peak = 0;
};

thread_local Tally sTally;

void* Take(size_t size)
{
    void* memory = malloc(std::max<size_t>(size, 1));
    if (memory == nullptr)
        std::abort();
    if (sTally.isCounting) {
        ++sTally.count;
        sTally.held += malloc_usable_size(memory);
        sTally.peak = std::max(sTally.peak, sTally.held);
    }
    return memory;
}

void Give(void* memory) noexcept
{
    if (sTally.isCounting && memory != nullptr)
        sTally.held -= std::min(sTally.held, malloc_usable_size(memory));
    free(memory);
}

} // namespace

void* operator new(size_t size)
{
    return Take(size);
}
void* operator new[](size_t size)
{
    return Take(size);
}
void operator delete(void* memory) noexcept
{
    Give(memory);
}
void operator delete[](void* memory) noexcept
{
    Give(memory);
}
void operator delete(void* memory, size_t) noexcept
{
    Give(memory);
}
void operator delete[](void* memory, size_t) noexcept
{
    Give(memory);
}

AllocationCounter::AllocationCounter()
{
    sTally = Tally();
    sTally.isCounting = true;
}

AllocationCounter::~AllocationCounter()
{
    sTally.isCounting = false;
}

size_t AllocationCounter::Count() const
{
    return sTally.count;
}

size_t AllocationCounter::Peak() const
{
    return sTally.peak;
}
