// SPDX-License-Identifier: MIT
#include "kits/kernel/ProcText.h"
#include "kits/kernel/record/ProcStat.h"
#include "tests/fuzz/Fuzz.h"

#include <array>
#include <vector>

using namespace kits;

// A line means the same anywhere in the text as alone.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text = TextOf(data, size);
    std::array<ProcessorTime, 32> times;
    bool isWhole = false;
    const size_t count = ParseProcessorTimes(text, times, &isWhole);

    std::vector<ProcessorTime> expected;
    std::string_view rest = text;
    while (expected.size() < times.size() && rest.starts_with("cpu")) {
        const auto line = TakeLine(&rest);
        if (!line.has_value())
            break;
        const std::vector<char> alone(line->begin(), line->end() + 1);
        ProcessorTime time;
        if (ParseProcessorTimes({alone.data(), alone.size()}, {&time, 1}, nullptr) == 1)
            expected.push_back(time);
    }
    Expect(count == expected.size());
    for (size_t i = 0; i < count; ++i) {
        Expect(times[i].index == expected[i].index && times[i].index >= 0);
        Expect(times[i].ticks == expected[i].ticks);
    }
    Expect(!isWhole || count == times.size() || !rest.starts_with("cpu"));
    return 0;
}
