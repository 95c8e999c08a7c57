// SPDX-License-Identifier: MIT
#include "kits/kernel/ProcText.h"
#include "kits/kernel/record/MachineTexts.h"
#include "tests/fuzz/Fuzz.h"

// The parsers of one figure each: the load, sockets, semaphores, processors, limits and the user.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text = TextOf(data, size);
    (void)kits::ParseThreadCount(text);
    (void)kits::ParseLargestSemCount(text);
    (void)kits::ParseSemCount(text);
    (void)kits::ParseHighestProcessor(text);
    for (const char* const key : {"Uid:", "Max processes ", "sockets: used "})
        (void)kits::NumberAfter(text, key);
    const auto figure = kits::FirstNumber(text);
    Expect(!figure.has_value() || text.find_first_of("0123456789") != std::string_view::npos);
    return 0;
}
