// SPDX-License-Identifier: MIT
#include "src/chart/ChartCaption.h"

#include <gtest/gtest.h>

namespace {

constexpr BRect kBounds{0, 0, 200, 60};
constexpr font_height kHeight{12, 4, 1};

} // namespace

TEST(FadeColorTest, GoesFromThePartnerToTheText)
{
    const rgb_color text{216, 216, 216, 0};
    const rgb_color partner{50, 50, 110, 0};
    EXPECT_EQ(FadeColor(text, partner, 0.25f), (rgb_color{91, 91, 136, 0}));
    EXPECT_EQ(FadeColor(text, partner, 1.0f), text);
    EXPECT_EQ(FadeColor(text, partner, 0.0f), partner);
}

TEST(FadeColorTest, RoundsTowardZeroOnTheWayUpAndDown)
{
    // 10 + 0.75 * 5 = 13.75, and 15 - 0.75 * 5 = 11.25.
    EXPECT_EQ(FadeColor({10, 15, 0, 0}, {15, 10, 0, 0}, 0.25f), (rgb_color{13, 11, 0, 0}));
}

TEST(FadeColorTest, AlwaysHasAlphaZero)
{
    EXPECT_EQ(FadeColor({1, 2, 3, 255}, {4, 5, 6, 255}, 1).alpha, 0);
}

TEST(AverageColorTest, RoundsDownPerChannel)
{
    EXPECT_EQ(AverageColor({100, 100, 220, 0}, {0, 0, 0, 0}), (rgb_color{50, 50, 110, 0}));
    EXPECT_EQ(AverageColor({255, 1, 254, 0}, {255, 0, 255, 0}), (rgb_color{255, 0, 254, 0}));
}

TEST(ModerateStringCoordTest, LeavesWhatIsInside)
{
    EXPECT_EQ(ModerateStringCoord(BPoint(50, 30), kBounds, 80, kHeight), BPoint(50, 30));
}

TEST(ModerateStringCoordTest, HoldsACaptionOnePixelOffEachEdge)
{
    EXPECT_EQ(ModerateStringCoord(BPoint(-5, 30), kBounds, 80, kHeight), BPoint(1, 30));
    EXPECT_EQ(ModerateStringCoord(BPoint(0.5f, 30), kBounds, 80, kHeight), BPoint(1, 30));
    EXPECT_EQ(ModerateStringCoord(BPoint(150, 30), kBounds, 80, kHeight), BPoint(119, 30));
    EXPECT_EQ(ModerateStringCoord(BPoint(50, 2), kBounds, 80, kHeight), BPoint(50, 13));
    EXPECT_EQ(ModerateStringCoord(BPoint(50, 70), kBounds, 80, kHeight), BPoint(50, 55));
}

TEST(ModerateStringCoordTest, ATextWiderThanTheViewSticksOut)
{
    EXPECT_EQ(ModerateStringCoord(BPoint(5, 30), kBounds, 300, kHeight).x, -101);
    EXPECT_EQ(ModerateStringCoord(BPoint(-101, 30), kBounds, 300, kHeight).x, 1);
}

TEST(CaptionRectTest, ReachesFromAscentToDescent)
{
    EXPECT_EQ(CaptionRect(BPoint(10, 30), 80, kHeight), BRect(10, 18, 90, 34));
}
