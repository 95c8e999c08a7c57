// SPDX-License-Identifier: MIT
#include "src/support/OneLine.h"

#include <gtest/gtest.h>

constexpr size_t kMost = kits::bounds::kMostInALine;

TEST(OneLine, LeavesTextAlone)
{
    EXPECT_EQ(OneLine("/home/me/Größe"), "/home/me/Größe");
    EXPECT_EQ(OneLine(std::string(kMost, 'x')), std::string(kMost, 'x'));
}

TEST(OneLine, ShowsWhatWouldEndOrChangeTheLine)
{
    EXPECT_EQ(OneLine("a\nb\r\t\x1b[31m\x7f"), "a?b???[31m?");
}

TEST(OneLine, CutsALongTextBetweenTwoCharacters)
{
    EXPECT_EQ(OneLine(std::string(kMost + 1, 'x')), std::string(kMost, 'x') + "...");
    const std::string character = "\U0001F4C8"; // of four bytes
    for (size_t i = 0; i < 4; ++i) {
        const std::string text(kMost - i, 'x');
        EXPECT_EQ(OneLine(text + character + character), text + "...") << i;
    }
}

TEST(OneLine, CutsWhatIsNoTextAnywhere)
{
    EXPECT_LE(OneLine(std::string(kMost * 2, '\x80')).size(), kMost + 3);
}
