// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

/// A colour, 0 to 255 each; alpha 255 is opaque.
struct rgb_color {
    uint8 red = 0;
    uint8 green = 0;
    uint8 blue = 0;
    uint8 alpha = 0;

    friend constexpr bool operator==(const rgb_color&, const rgb_color&) = default;
};

[[nodiscard]] constexpr rgb_color make_color(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255)
{
    return {red, green, blue, alpha};
}
