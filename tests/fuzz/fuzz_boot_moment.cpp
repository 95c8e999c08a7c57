// SPDX-License-Identifier: MIT
#include "kits/kernel/clock/BootMoment.h"
#include "tests/fuzz/Fuzz.h"

// The reader accepts only what the program writes, and returns it unchanged.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text = TextOf(data, size);
    const auto boot = kits::ParseBootMoment(text);
    Expect(!boot.has_value() || kits::FormatBootMoment(*boot) == text);

    // As an id, because a checksum is hard to guess.
    if (size < 64 && text.find('\n') == std::string_view::npos) {
        const kits::BootMoment written{std::string(text), static_cast<bigtime_t>(size) * 1000003};
        Expect(kits::ParseBootMoment(kits::FormatBootMoment(written)) == written);
    }
    return 0;
}
