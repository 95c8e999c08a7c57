// SPDX-License-Identifier: MIT
#include "kits/support/Rect.h"

#include "kits/support/Color.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(RectTest, BeginsEmptyAndNotValid)
{
    const BRect rect;
    EXPECT_FALSE(rect.IsValid());
    EXPECT_EQ(rect, BRect(0, 0, -1, -1));
    EXPECT_TRUE(BRect(5, 5, 5, 5).IsValid()) << "one pixel";
    EXPECT_FALSE(BRect(5, 5, 4, 5).IsValid());
    EXPECT_FALSE(BRect(NAN, 5, 4, 5).IsValid());
}

TEST(RectTest, ItsRightAndBottomBelongToIt)
{
    const BRect rect(10, 20, 19, 24);
    EXPECT_EQ(rect.Width(), 9);
    EXPECT_EQ(rect.Height(), 4);
    EXPECT_TRUE(rect.Contains(BPoint(19, 24)));
    EXPECT_TRUE(rect.Contains(BPoint(10, 20)));
    EXPECT_FALSE(rect.Contains(BPoint(20, 24)));
    EXPECT_FALSE(rect.Contains(BPoint(19, 25)));
    EXPECT_TRUE(rect.Contains(rect));
    EXPECT_TRUE(rect.Contains(BRect(11, 21, 12, 22)));
    EXPECT_FALSE(rect.Contains(BRect(11, 21, 12, 25)));
}

TEST(RectTest, HasCorners)
{
    const BRect rect(1, 2, 3, 4);
    EXPECT_EQ(rect.LeftTop(), BPoint(1, 2));
    EXPECT_EQ(rect.RightTop(), BPoint(3, 2));
    EXPECT_EQ(rect.LeftBottom(), BPoint(1, 4));
    EXPECT_EQ(rect.RightBottom(), BPoint(3, 4));
    EXPECT_EQ(BRect(BPoint(1, 2), BPoint(3, 4)), BRect(1, 2, 3, 4));
}

TEST(RectTest, Moves)
{
    BRect rect(1, 2, 11, 22);
    rect.OffsetBy(5, -1);
    EXPECT_EQ(rect, BRect(6, 1, 16, 21));
    rect.OffsetTo(BPoint(0, 0));
    EXPECT_EQ(rect, BRect(0, 0, 10, 20));
    rect.InsetBy(1, 2);
    EXPECT_EQ(rect, BRect(1, 2, 9, 18));
    rect.InsetBy(-1, -2);
    EXPECT_EQ(rect, BRect(0, 0, 10, 20));
}

TEST(RectTest, HasThingsInCommon)
{
    const BRect rect(0, 0, 9, 9);
    EXPECT_TRUE(rect.Intersects(BRect(9, 9, 20, 20))) << "one pixel";
    EXPECT_FALSE(rect.Intersects(BRect(10, 0, 20, 9)));
    EXPECT_FALSE(rect.Intersects(BRect(5, 5, 4, 4)));
    EXPECT_EQ(rect & BRect(5, 6, 20, 20), BRect(5, 6, 9, 9));
    EXPECT_FALSE((rect & BRect(10, 10, 20, 20)).IsValid());
    EXPECT_EQ(rect | BRect(5, -6, 20, 3), BRect(0, -6, 20, 9));
    EXPECT_EQ(rect | BRect(), rect);
    EXPECT_EQ(BRect() | rect, rect);
}

TEST(PointTest, Counts)
{
    BPoint point(1, 2);
    EXPECT_EQ(point + BPoint(3, 4), BPoint(4, 6));
    EXPECT_EQ(point - BPoint(3, 4), BPoint(-2, -2));
    EXPECT_EQ(-point, BPoint(-1, -2));
    point += BPoint(10, 10);
    point -= BPoint(1, 0);
    EXPECT_EQ(point, BPoint(10, 12));
    point.Set(7, 8);
    EXPECT_EQ(point, BPoint(7, 8));
    EXPECT_EQ(B_ORIGIN, BPoint(0, 0));
}

TEST(ColorTest, HasItsParts)
{
    constexpr rgb_color color = make_color(1, 2, 3);
    EXPECT_EQ(color.red, 1);
    EXPECT_EQ(color.green, 2);
    EXPECT_EQ(color.blue, 3);
    EXPECT_EQ(color.alpha, 255);
    EXPECT_EQ(color, (rgb_color{1, 2, 3, 255}));
    EXPECT_FALSE(color == make_color(1, 2, 3, 0));
    EXPECT_EQ(sizeof(rgb_color), 4u);
}
