// SPDX-License-Identifier: MIT
#include "tools/resources/Picture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

// Two pixels beside each other, as a portable pixmap.
constexpr char kPicture[] = "P6 2 1 255\n\x01\x02\x03\xff\xfe\xfd";

} // namespace

TEST(Picture, IsItsSizeAndItsPixels)
{
    std::string bytes;
    ASSERT_TRUE(PixelsOfPicture(std::string_view(kPicture, sizeof kPicture - 1), &bytes));
    ASSERT_EQ(bytes.size(), 4 * sizeof(uint32_t));
    uint32_t words[4];
    std::memcpy(words, bytes.data(), sizeof words);
    EXPECT_EQ(words[0], 2u);
    EXPECT_EQ(words[1], 1u);
    EXPECT_EQ(words[2], 0xFF010203u);
    EXPECT_EQ(words[3], 0xFFFFFEFDu);
}

TEST(Picture, IsNotMadeOfAnythingElse)
{
    std::string bytes = "as it was";
    EXPECT_FALSE(PixelsOfPicture("no picture", &bytes));
    EXPECT_FALSE(PixelsOfPicture("", &bytes));
    EXPECT_EQ(bytes, "as it was");
}
