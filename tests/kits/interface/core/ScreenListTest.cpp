// SPDX-License-Identifier: MIT
#include "kits/interface/core/ScreenList.h"

#include <gtest/gtest.h>

using kits::PixelRect;
using kits::ScreenList::PutInReach;
using kits::ScreenList::PutWithin;
using kits::ScreenList::Screen;

namespace {

/// Two side by side, with a panel below the first.
const std::vector<Screen> kScreens{{{0, 0, 1000, 800}, {0, 0, 1000, 760}},
                                   {{1000, 0, 1600, 600}, {1000, 0, 1600, 600}}};

} // namespace

TEST(ScreenList, AWindowInReachStaysWhereItIs)
{
    for (const PixelRect& content : {PixelRect{100, 100, 400, 300}, PixelRect{-200, 20, 100, 300},
                                     PixelRect{936, 730, 1300, 1300}, PixelRect{1500, 500, 1900, 900}})
        EXPECT_EQ(PutInReach(content, 20, kScreens), content);
}

TEST(ScreenList, AWindowWhoseTitleIsOutOfReachComesWithAllOfItWhereThereIsRoom)
{
    // Beyond the right and lower edge, below the panel, and above the upper edge.
    EXPECT_EQ(PutInReach({2000, 900, 2300, 1100}, 20, kScreens), (PixelRect{1300, 400, 1600, 600}));
    EXPECT_EQ(PutInReach({100, 790, 400, 990}, 20, kScreens), (PixelRect{100, 560, 400, 760}));
    EXPECT_EQ(PutInReach({100, 10, 400, 210}, 20, kScreens), (PixelRect{100, 20, 400, 220}));
    // Only a sliver is visible.
    EXPECT_EQ(PutInReach({-290, 100, 10, 300}, 20, kScreens), (PixelRect{0, 100, 300, 300}));
}

TEST(ScreenList, AWindowLargerThanTheScreenShowsItsLeftUpperCorner)
{
    EXPECT_EQ(PutInReach({3000, 100, 8000, 5000}, 20, {kScreens[0]}), (PixelRect{0, 20, 5000, 4920}));
}

TEST(ScreenList, AWindowWithoutATitleIsHeldByItsUpperEdge)
{
    EXPECT_EQ(PutInReach({100, 0, 400, 200}, 0, kScreens), (PixelRect{100, 0, 400, 200}));
    EXPECT_EQ(PutInReach({100, 755, 400, 955}, 0, kScreens), (PixelRect{100, 560, 400, 760}));
    EXPECT_EQ(PutInReach({100, 755, 130, 785}, 0, {}), (PixelRect{100, 755, 130, 785}));
}

TEST(ScreenList, AWindowIsPutWithinARoom)
{
    constexpr PixelRect kRoom{1000, 100, 1600, 600};
    EXPECT_EQ(PutWithin({1100, 200, 1400, 400}, 20, kRoom), (PixelRect{1100, 200, 1400, 400}));
    EXPECT_EQ(PutWithin({900, 50, 1200, 250}, 20, kRoom), (PixelRect{1000, 120, 1300, 320}));
    EXPECT_EQ(PutWithin({1500, 550, 1800, 750}, 20, kRoom), (PixelRect{1300, 400, 1600, 600}));
    // A larger frame has its middle there.
    EXPECT_EQ(PutWithin({900, 50, 1700, 650}, 20, kRoom), (PixelRect{900, 60, 1700, 660}));
}
