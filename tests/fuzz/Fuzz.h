// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// libFuzzer calls this with every input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

inline std::string_view TextOf(const uint8_t* data, size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// A broken promise ends the run, and the input is kept.
inline void Expect(bool holds)
{
    if (!holds)
        std::abort();
}
