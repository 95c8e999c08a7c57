// SPDX-License-Identifier: MIT
#include "kits/kernel/record/MachineTexts.h"
#include "tests/fuzz/Fuzz.h"

// The first two bytes are the position of the line last time; the line is found wherever it is.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2)
        return 0;
    const std::string_view text = TextOf(data + 2, size - 2);
    size_t hint = 0;
    const auto found = kits::ParsePageFaults(text, &hint);
    Expect(!found.has_value() || text.substr(hint).starts_with("pgfault "));
    Expect(kits::ParsePageFaults(text, &hint) == found);
    size_t anyHint = data[0] * 256u + data[1];
    const size_t before = anyHint;
    (void)kits::ParsePageFaults(text, &anyHint);
    Expect(anyHint == before || text.substr(anyHint).starts_with("pgfault "));
    return 0;
}
