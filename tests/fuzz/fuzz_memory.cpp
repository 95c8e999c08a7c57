// SPDX-License-Identifier: MIT
#include "kits/kernel/record/MachineTexts.h"
#include "tests/fuzz/Fuzz.h"

#include <vector>

// A truncated text gives the figures of the whole one, or none.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text = TextOf(data, size);
    const kits::MemoryTexts whole = kits::ParseMemInfo(text);
    const std::vector<char> half(text.begin(), text.begin() + static_cast<ptrdiff_t>(size / 2));
    const kits::MemoryTexts cut = kits::ParseMemInfo({half.data(), half.size()});
    Expect(!cut.total.has_value() || cut.total == whole.total);
    Expect(!cut.available.has_value() || cut.available == whole.available);
    return 0;
}
