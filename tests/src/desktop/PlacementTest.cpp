// SPDX-License-Identifier: MIT
#include "src/desktop/Placement.h"

#include "kits/application/Message.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

const BRect kLeft(0, 0, 1279, 799);
const BRect kRight(1280, 0, 3199, 1079);
const BRect kChart(100, 200, 400, 300);

} // namespace

TEST(ArrangementTest, IsTheSameInAnyOrder)
{
    EXPECT_EQ(ArrangementOf({kLeft, kRight}), ArrangementOf({kRight, kLeft}));
    EXPECT_NE(ArrangementOf({kLeft, kRight}), ArrangementOf({kLeft}));
    EXPECT_EQ(ArrangementOf({kLeft}), "1280x800+0+0");
}

TEST(InReachTest, LeavesWhatCanBeReached)
{
    EXPECT_EQ(InReach(kChart, {kLeft}), kChart);
    // Its larger part may be off the screen.
    const BRect half(1270, 790, 1570, 890);
    EXPECT_EQ(InReach(half, {kLeft}), half);
    EXPECT_EQ(InReach(BRect(1500, 900, 1800, 1000), {kLeft, kRight}), BRect(1500, 900, 1800, 1000));
    EXPECT_EQ(InReach(kChart, {}), kChart);
}

TEST(InReachTest, BringsWhatIsOffTheScreensToTheNearest)
{
    EXPECT_EQ(InReach(BRect(1500, 500, 1800, 600), {kLeft}), BRect(979, 500, 1279, 600));
    EXPECT_EQ(InReach(BRect(-50, -20, 250, 80), {kLeft}), BRect(0, 0, 300, 100));
    EXPECT_EQ(InReach(BRect(-50, 1500, 250, 1600), {kLeft, kRight}), BRect(0, 699, 300, 799));
    EXPECT_EQ(InReach(BRect(5000, 100, 5300, 200), {kLeft, kRight}), BRect(2899, 100, 3199, 200));
    // Larger than the screen: its handle is visible.
    EXPECT_EQ(InReach(BRect(-5, -5, 1994, 1994), {kLeft}).LeftTop(), BPoint(0, 0));
}

TEST(HeldToScreensTest, KeepsSizesThatCanBeShown)
{
    EXPECT_EQ(HeldToScreens(kChart, {kLeft}), kChart);
    EXPECT_EQ(HeldToScreens(BRect(7, 9, 7, 9), {kLeft}), BRect(7, 9, 27, 29));
    EXPECT_EQ(HeldToScreens(BRect(0, 0, 16000, 16000), {kLeft, kRight}), BRect(0, 0, 3199, 1079));
}

TEST(FreePlaceTest, GoesFromTheRightTopCornerDownAndLeft)
{
    std::vector<BRect> others;
    for (int i = 0; i < 20; i++) {
        const BPoint place = FreePlace(300, 100, others, {kLeft});
        const BRect frame(place.x, place.y, place.x + 300, place.y + 100);
        for (const BRect& other : others)
            EXPECT_FALSE(frame.Intersects(other)) << i;
        EXPECT_TRUE(kLeft.Contains(frame)) << i;
        others.push_back(frame);
    }
    EXPECT_EQ(others[0], BRect(971, 8, 1271, 108));
    EXPECT_EQ(others[1].left, others[0].left);
    EXPECT_LT(others[19].left, others[0].left);
}

TEST(FreePlaceTest, IsOnTheScreenWhereNothingIsFree)
{
    const std::vector<BRect> everything(3, kLeft);
    const BPoint place = FreePlace(300, 100, everything, {kLeft});
    EXPECT_TRUE(kLeft.Contains(BRect(place.x, place.y, place.x + 300, place.y + 100)));
    EXPECT_TRUE(kLeft.Contains(FreePlace(5000, 5000, {}, {kLeft})));
    EXPECT_EQ(FreePlace(10, 10, {}, {}), BPoint(0, 0));
}

TEST(PlacesTest, GoBackWhenTheScreensDo)
{
    const std::string one = ArrangementOf({kLeft});
    const std::string two = ArrangementOf({kLeft, kRight});
    Places places;
    EXPECT_FALSE(places.For(one).IsValid());
    places.Wish(two, BRect(2000, 10, 2300, 110));
    // The user has not placed it there yet.
    EXPECT_EQ(places.For(one), BRect(2000, 10, 2300, 110));
    places.Wish(one, kChart);
    EXPECT_EQ(places.For(one), kChart);
    EXPECT_EQ(places.For(two), BRect(2000, 10, 2300, 110));
    EXPECT_EQ(places.For("another"), kChart);
}

TEST(PlacesTest, SurviveTheirStore)
{
    Places places;
    places.Wish("a", kChart);
    places.Wish("b", kLeft);
    places.Wish("a", kRight);
    BMessage saved;
    places.SaveTo(&saved);
    Places loaded;
    loaded.LoadFrom(saved);
    EXPECT_EQ(loaded.For("a"), kRight);
    EXPECT_EQ(loaded.For("b"), kLeft);
    EXPECT_EQ(loaded.For("c"), kRight);
}

TEST(PlacesTest, RememberTheLastArrangementsOnly)
{
    Places places;
    for (int i = 0; i < 100; i++)
        places.Wish(std::to_string(i), kChart);
    BMessage saved;
    places.SaveTo(&saved);
    BMessage place;
    EXPECT_EQ(saved.FindMessage("Place", &place, Places::kMost - 1), B_OK);
    EXPECT_NE(saved.FindMessage("Place", &place, Places::kMost), B_OK);
}

TEST(PlacesTest, LeaveOutWhatIsNoPlace)
{
    BMessage saved;
    for (const BRect& frame : {BRect(NAN, 0, 10, 10), BRect(0, 0, INFINITY, 10), BRect(10, 10, 0, 0),
                               BRect(0, 0, 1e9F, 10), BRect(-1e9F, 0, 10, 10)}) {
        BMessage place;
        place.AddString("Screens", "a");
        place.AddRect("Frame", frame);
        saved.AddMessage("Place", &place);
    }
    const BMessage empty;
    saved.AddMessage("Place", &empty);
    saved.AddInt32("Place", 7);
    Places places;
    places.LoadFrom(saved);
    EXPECT_FALSE(places.For("a").IsValid());
}
