// SPDX-License-Identifier: MIT
#include "kits/interface/drawing/TextCache.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// Returns the pixels by which a text's picture exceeds its room at this scale.
int32 Beyond(const BFont& font, const char* text, double scale)
{
    const auto mask = kits::TextCache::Mask(font, text, scale);
    if (mask == nullptr)
        return 1000;
    const double room = static_cast<double>(kits::TextCache::Width(font, text)) * scale;
    return mask->left + mask->width - static_cast<int32>(std::ceil(room));
}

} // namespace

TEST(TextCache, ATextHasRoomAtEveryScale)
{
    for (const float size : {9.0f, 12.0f, 13.0f, 15.0f, 30.0f}) {
        BFont font;
        font.SetSize(size);
        for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0})
            for (const char* text :
                 {"Charts of what this machine is doing.", "Home: https://example.org/qel", "100.0 %", "15432.7 MB",
                  "Allocated semaphores (exp. averaged)", "lllllllllllllllllllll!"})
                EXPECT_LE(Beyond(font, text, scale), 1) << text << " at " << size << " x " << scale;
    }
}
