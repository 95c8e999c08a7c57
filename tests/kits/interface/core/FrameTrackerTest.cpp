// SPDX-License-Identifier: MIT
#include "kits/interface/core/FrameTracker.h"

#include <gtest/gtest.h>

using kits::FrameTracker;
using kits::PixelRect;

namespace {

constexpr bigtime_t kLong = 10 * FrameTracker::kGrace;
constexpr PixelRect kStart{50, 60, 350, 210};

bool HasSize(const PixelRect& rect, int32 width, int32 height)
{
    return rect.Width() == width && rect.Height() == height;
}

} // namespace

TEST(FrameTracker, TakesOverWhatTheUserDoes)
{
    FrameTracker tracker(kStart);
    EXPECT_TRUE(tracker.ReportSize(400, 300, kLong));
    EXPECT_TRUE(tracker.ReportPlace(10, 20, kLong));
    EXPECT_EQ(tracker.Frame(), (PixelRect{10, 20, 410, 320}));
    EXPECT_EQ(tracker.Content(), tracker.Frame());
    EXPECT_FALSE(tracker.ReportSize(400, 300, kLong));
}

TEST(FrameTracker, ARequestCountsAtOnceAndOldNewsDoesNot)
{
    FrameTracker tracker(kStart);
    EXPECT_TRUE(tracker.Ask({50, 60, 550, 460}, kLong));
    EXPECT_TRUE(tracker.IsPending());
    EXPECT_TRUE(HasSize(tracker.Content(), 500, 400));
    // A report from before the window manager saw the request.
    EXPECT_FALSE(tracker.ReportSize(320, 240, kLong + 1));
    EXPECT_TRUE(HasSize(tracker.Frame(), 500, 400));
    EXPECT_TRUE(HasSize(tracker.Content(), 500, 400));
    tracker.ReportSize(500, 400, kLong + 2);
    EXPECT_FALSE(tracker.IsPending());
    // From now on reports come from the user again.
    EXPECT_TRUE(tracker.ReportSize(510, 400, kLong + 3));
    EXPECT_TRUE(HasSize(tracker.Frame(), 510, 400));
}

TEST(FrameTracker, AskingBackBeforeTheAnswerIgnoresTheAnswerInBetween)
{
    FrameTracker tracker(kStart);
    tracker.Ask({50, 60, 550, 460}, kLong);
    tracker.Ask(kStart, kLong + 1);
    EXPECT_FALSE(tracker.ReportSize(500, 400, kLong + 2));
    EXPECT_EQ(tracker.Frame(), kStart);
    tracker.ReportSize(300, 150, kLong + 3);
    EXPECT_FALSE(tracker.IsPending());
}

TEST(FrameTracker, AWindowManagerThatRefusesTiles)
{
    FrameTracker tracker(kStart);
    tracker.Ask({50, 60, 250, 160}, kLong);
    tracker.ReportSize(900, 700, kLong + 1);
    EXPECT_TRUE(tracker.GraceOver(1920, 1080));
    EXPECT_TRUE(tracker.IsZoomed());
    EXPECT_TRUE(HasSize(tracker.Content(), 900, 700));
    EXPECT_TRUE(HasSize(tracker.Frame(), 200, 100));
    // Another window opens, so ours gets smaller, and not by the user's hand.
    tracker.ReportSize(450, 700, 2 * kLong);
    EXPECT_TRUE(HasSize(tracker.Content(), 450, 700));
    EXPECT_TRUE(HasSize(tracker.Frame(), 200, 100));
    // It floats again.
    tracker.ReportSize(200, 100, 3 * kLong);
    EXPECT_FALSE(tracker.IsZoomed());
    tracker.ReportSize(210, 100, 4 * kLong);
    EXPECT_TRUE(HasSize(tracker.Frame(), 210, 100));
}

TEST(FrameTracker, MoreThanTheScreenHasIsNoTiling)
{
    FrameTracker tracker(kStart);
    tracker.Ask({0, 0, 4000, 3000}, kLong);
    tracker.ReportSize(1920, 1080, kLong + 1);
    EXPECT_TRUE(tracker.GraceOver(1920, 1080));
    EXPECT_FALSE(tracker.IsZoomed());
    EXPECT_TRUE(HasSize(tracker.Frame(), 1920, 1080));
}

TEST(FrameTracker, GraceWithTheAskedSizeChangesNothing)
{
    FrameTracker tracker(kStart);
    tracker.Show();
    EXPECT_TRUE(tracker.IsPending());
    EXPECT_FALSE(tracker.GraceOver(1920, 1080));
    EXPECT_FALSE(tracker.IsPending());
    EXPECT_FALSE(tracker.IsZoomed());
}

TEST(FrameTracker, WhatItGetsWhenItIsShownIsNotTheUsers)
{
    FrameTracker tracker(kStart);
    tracker.Show();
    tracker.ReportSize(1000, 800, kLong);
    EXPECT_EQ(tracker.Frame(), kStart);
    EXPECT_TRUE(tracker.GraceOver(1920, 1080));
    EXPECT_EQ(tracker.Frame(), kStart);
    EXPECT_TRUE(tracker.IsZoomed());
}

TEST(FrameTracker, AMaximisedWindowKeepsTheFrameThatItGoesBackTo)
{
    FrameTracker tracker(kStart);
    tracker.SetZoomed(true, kLong);
    tracker.ReportPlace(0, 0, kLong + 1);
    tracker.ReportSize(1920, 1080, kLong + 1);
    EXPECT_EQ(tracker.Frame(), kStart);
    EXPECT_EQ(tracker.Content(), (PixelRect{0, 0, 1920, 1080}));
    // Meanwhile a tab is switched: the system's window keeps its size.
    EXPECT_FALSE(tracker.Ask({50, 60, 150, 160}, 2 * kLong));
    EXPECT_TRUE(HasSize(tracker.Content(), 1920, 1080));
    EXPECT_TRUE(HasSize(tracker.Frame(), 100, 100));
    // Restored: the window manager gives the size that it remembers, and we want the one requested since.
    tracker.ReportSize(300, 150, 3 * kLong);
    EXPECT_TRUE(tracker.SetZoomed(false, 3 * kLong + 1));
    EXPECT_TRUE(HasSize(tracker.Content(), 100, 100));
    tracker.ReportSize(100, 100, 3 * kLong + 2);
    EXPECT_TRUE(HasSize(tracker.Frame(), 100, 100));
}

TEST(FrameTracker, TheLargeSizeMayComeBeforeTheState)
{
    FrameTracker tracker(kStart);
    tracker.ReportPlace(0, 0, kLong);
    tracker.ReportSize(1920, 1080, kLong + 5000);
    EXPECT_TRUE(HasSize(tracker.Frame(), 1920, 1080));
    tracker.SetZoomed(true, kLong + 10000);
    EXPECT_EQ(tracker.Frame(), kStart);
    EXPECT_TRUE(HasSize(tracker.Content(), 1920, 1080));
}

TEST(FrameTracker, ASizeThatTheUserChoseLongAgoStays)
{
    FrameTracker tracker(kStart);
    tracker.ReportSize(640, 480, kLong);
    tracker.SetZoomed(true, 2 * kLong);
    EXPECT_TRUE(HasSize(tracker.Frame(), 640, 480));
}

TEST(FrameTracker, WherePlacesAreUnknownTheContentIsAtTheOrigin)
{
    FrameTracker tracker(kStart);
    tracker.SetPlaceless();
    EXPECT_EQ(tracker.Frame(), kStart);
    EXPECT_EQ(tracker.Content(), (PixelRect{0, 0, kStart.Width(), kStart.Height()}));
    tracker.Ask({50, 60, 150, 160}, kLong);
    EXPECT_EQ(tracker.Content(), (PixelRect{0, 0, 100, 100}));
    EXPECT_EQ(tracker.Frame(), (PixelRect{50, 60, 150, 160}));
    tracker.ReportSize(100, 100, kLong + 1);
    EXPECT_EQ(tracker.Content(), (PixelRect{0, 0, 100, 100}));
}

TEST(FrameTracker, AChangeOfScaleIsNoWishOfTheUsers)
{
    FrameTracker tracker(kStart);
    tracker.Rescale(50, 60, kLong);
    EXPECT_TRUE(tracker.IsPending());
    // A late report from before, and the old size in pixels as logical pixels of the new scale.
    EXPECT_FALSE(tracker.ReportSize(300, 150, kLong + 1));
    EXPECT_FALSE(tracker.ReportSize(150, 75, kLong + 2));
    EXPECT_TRUE(HasSize(tracker.Content(), 300, 150));
    tracker.ReportPlace(25, 30, kLong + 2);
    tracker.ReportPlace(50, 60, kLong + 3);
    tracker.ReportSize(300, 150, kLong + 3);
    EXPECT_FALSE(tracker.GraceOver(1920, 1080));
    EXPECT_FALSE(tracker.IsPending());
    EXPECT_EQ(tracker.Frame(), kStart);
    EXPECT_EQ(tracker.Content(), kStart);
    // Afterwards the user's moves count again.
    tracker.ReportSize(310, 160, 2 * kLong);
    tracker.ReportPlace(70, 80, 2 * kLong);
    EXPECT_EQ(tracker.Frame(), (PixelRect{70, 80, 380, 240}));
}

TEST(FrameTracker, AChangeOfScaleThatIsGrantedAtOnceIsNotReported)
{
    FrameTracker tracker(kStart);
    tracker.Rescale(50, 60, kLong);
    EXPECT_FALSE(tracker.GraceOver(1920, 1080));
    EXPECT_FALSE(tracker.IsZoomed());
    EXPECT_EQ(tracker.Content(), kStart);
}

TEST(FrameTracker, ASizeThatAScaleHasNoRoomForComesBackAtTheNext)
{
    FrameTracker tracker(kStart);
    tracker.Rescale(50, 60, kLong);
    tracker.ReportSize(200, 100, kLong + 1);
    EXPECT_TRUE(tracker.GraceOver(200, 100));
    EXPECT_TRUE(HasSize(tracker.Content(), 200, 100));
    EXPECT_EQ(tracker.Frame(), kStart);
    tracker.Rescale(50, 60, 2 * kLong);
    tracker.ReportSize(300, 150, 2 * kLong + 1);
    EXPECT_FALSE(tracker.GraceOver(400, 200));
    EXPECT_FALSE(tracker.IsZoomed());
    EXPECT_EQ(tracker.Content(), kStart);
}

TEST(FrameTracker, APlaceThatAScaleForcesUponAWindowIsLeftForItsOwnAgain)
{
    FrameTracker tracker(kStart);
    tracker.Rescale(10, 20, kLong);
    tracker.ReportPlace(12, 22, kLong + 1); // where the window manager prefers it
    tracker.ReportPlace(12, 22, 3 * kLong);
    EXPECT_EQ(tracker.Frame(), kStart);
    EXPECT_EQ(tracker.Wanted(), (PixelRect{12, 22, 312, 172}));
    // The program resizes it, for another tab: it stays in its visible place.
    EXPECT_TRUE(tracker.Ask({50, 60, 150, 160}, 4 * kLong));
    EXPECT_EQ(tracker.Wanted(), (PixelRect{12, 22, 112, 122}));
    EXPECT_EQ(tracker.Frame(), (PixelRect{50, 60, 150, 160}));
    // If the user moves it there, that becomes its place.
    tracker.ReportPlace(15, 25, 5 * kLong);
    EXPECT_EQ(tracker.Wanted(), tracker.Frame());
    EXPECT_EQ(tracker.Frame(), (PixelRect{15, 25, 115, 125}));
    tracker.Rescale(1, 2, 6 * kLong);
    tracker.Ask({30, 40, 130, 140}, 6 * kLong + 1);
    EXPECT_EQ(tracker.Wanted(), (PixelRect{30, 40, 130, 140}));
}

TEST(FrameTracker, AMaximisedWindowStaysSoAtAnotherScale)
{
    FrameTracker tracker(kStart);
    tracker.SetZoomed(true, kLong);
    tracker.ReportSize(1920, 1080, kLong + 1);
    tracker.Rescale(50, 60, 2 * kLong);
    EXPECT_FALSE(tracker.IsPending());
    tracker.ReportSize(960, 540, 2 * kLong + 1);
    tracker.ReportPlace(0, 0, 2 * kLong + 1);
    EXPECT_EQ(tracker.Content(), (PixelRect{0, 0, 960, 540}));
    EXPECT_EQ(tracker.Frame(), kStart);
}

TEST(FrameTracker, NearlyTheAskedSizeIsThatSizeAtABrokenScale)
{
    FrameTracker tracker(kStart);
    tracker.SetSlack(1);
    tracker.Show();
    tracker.ReportSize(299, 150, kLong);
    EXPECT_FALSE(tracker.IsPending());
    tracker.ReportSize(299, 149, 2 * kLong);
    EXPECT_EQ(tracker.Frame(), kStart);
    EXPECT_TRUE(HasSize(tracker.Content(), 299, 149));
    EXPECT_FALSE(tracker.IsZoomed());
    tracker.ReportSize(280, 149, 3 * kLong);
    EXPECT_TRUE(HasSize(tracker.Frame(), 280, 149));
}

TEST(FrameTracker, ASizeThatIsHeldOnTheWayToAnotherScreenIsNotThatOfTheReports)
{
    FrameTracker tracker(kStart);
    tracker.HoldSize();
    // The same number of screen pixels is half as many logical ones there. The place is the user's.
    tracker.ReportSize(150, 75, kLong);
    tracker.ReportPlace(700, 80, kLong);
    EXPECT_FALSE(tracker.HasWantedSize());
    EXPECT_EQ(tracker.Frame(), (PixelRect{700, 80, 1000, 230}));
    EXPECT_EQ(tracker.Content(), tracker.Frame());
    tracker.Ask(tracker.Frame(), 2 * kLong);
    tracker.ReportSize(300, 150, 2 * kLong);
    EXPECT_FALSE(tracker.IsPending());
    tracker.ReportSize(310, 160, 3 * kLong);
    EXPECT_TRUE(HasSize(tracker.Frame(), 310, 160));
}

TEST(FrameTracker, AReleasedSizeCountsAgain)
{
    FrameTracker tracker(kStart);
    tracker.HoldSize();
    tracker.ReportSize(150, 75, kLong);
    tracker.Release();
    EXPECT_TRUE(tracker.ReportSize(200, 80, 2 * kLong));
    EXPECT_TRUE(HasSize(tracker.Frame(), 200, 80));
}

TEST(FrameTracker, AMaximisedWindowHoldsNoSize)
{
    FrameTracker tracker(kStart);
    tracker.SetZoomed(true, kLong);
    tracker.HoldSize();
    tracker.ReportSize(1000, 800, kLong);
    EXPECT_TRUE(HasSize(tracker.Content(), 1000, 800));
    EXPECT_EQ(tracker.Frame(), kStart);
}
