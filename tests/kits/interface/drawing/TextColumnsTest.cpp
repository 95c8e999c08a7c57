// SPDX-License-Identifier: MIT
#include "kits/interface/drawing/TextColumns.h"

#include <gtest/gtest.h>

using Rows = std::vector<std::vector<double>>;

TEST(TextColumnsTest, LinesThatFollowOneAnotherShareTheirStops)
{
    EXPECT_EQ(kits::TabStops({{30, 10}, {55, 10}, {12, 99}}, 20, 1), (Rows{{60}, {60}, {60}}));
}

TEST(TextColumnsTest, TheGapIsKeptFree)
{
    EXPECT_EQ(kits::TabStops({{40, 1}}, 20, 0), (Rows{{40}}));
    EXPECT_EQ(kits::TabStops({{40, 1}}, 20, 1), (Rows{{60}}));
}

TEST(TextColumnsTest, ALineWithoutTabsPartsGroups)
{
    EXPECT_EQ(kits::TabStops({{30, 1}, {5}, {90, 1}}, 20, 1), (Rows{{40}, {}, {100}}));
}

TEST(TextColumnsTest, LaterColumnsBeginBehindEarlierOnes)
{
    EXPECT_EQ(kits::TabStops({{10, 30, 1}, {15, 45, 1}, {15, 999}}, 20, 1), (Rows{{20, 80}, {20, 80}, {20, 80}}));
}

TEST(TextColumnsTest, EmptyCellsTakeOneUnit)
{
    EXPECT_EQ(kits::TabStops({{0, 0, 0}}, 20, 1), (Rows{{20, 40}}));
    EXPECT_EQ(kits::TabStops({}, 20, 1), Rows{});
}
