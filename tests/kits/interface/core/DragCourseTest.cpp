// SPDX-License-Identifier: MIT
#include "kits/interface/core/DragCourse.h"

#include <gtest/gtest.h>

namespace {

using kits::DragCourse;

using Taker = DragCourse::Taker;
using Ground = kits::DesktopLayer::Ground;

const BPoint kPlace(700, 500);

} // namespace

TEST(DragCourse, AnArchiveReleasedOverTheDesktopIsADropThere)
{
    // The root window, a desktop that would accept the drop and one that would refuse it look the same here: none of
    // them is offered the drop.
    DragCourse course(Taker::kDesktop);
    EXPECT_TRUE(course.Release(kPlace, Ground::kDesktop));
    ASSERT_TRUE(course.DropOnDesktop().has_value());
    EXPECT_EQ(*course.DropOnDesktop(), kPlace);
}

TEST(DragCourse, AnArchiveReleasedOverAnotherWindowIsLeftToTheToolkit)
{
    DragCourse course(Taker::kDesktop);
    EXPECT_FALSE(course.Release(kPlace, Ground::kProgram));
    EXPECT_FALSE(course.DropOnDesktop().has_value());
}

TEST(DragCourse, WhatIsForOtherProgramsIsLeftToTheToolkitOverTheDesktopToo)
{
    DragCourse course(Taker::kPrograms);
    EXPECT_FALSE(course.IsForDesktop());
    EXPECT_FALSE(course.Release(kPlace, Ground::kDesktop));
    EXPECT_FALSE(course.DropOnDesktop().has_value());
}

TEST(DragCourse, ChartsOnTheDesktopLieInNoArchivesWay)
{
    DragCourse course(Taker::kDesktop);
    EXPECT_TRUE(course.Release(kPlace, Ground::kDesktopWindow));
    EXPECT_TRUE(course.DropOnDesktop().has_value());
}

TEST(DragCourse, ChartsOnTheDesktopTakeAColourThemselves)
{
    DragCourse onChart(Taker::kBareDesktop);
    EXPECT_TRUE(onChart.IsForDesktop());
    EXPECT_FALSE(onChart.Release(kPlace, Ground::kDesktopWindow));
    EXPECT_FALSE(onChart.DropOnDesktop().has_value());

    DragCourse onDesktop(Taker::kBareDesktop);
    EXPECT_TRUE(onDesktop.Release(kPlace, Ground::kDesktop));
    EXPECT_TRUE(onDesktop.DropOnDesktop().has_value());

    DragCourse onWindow(Taker::kBareDesktop);
    EXPECT_FALSE(onWindow.Release(kPlace, Ground::kProgram));
}

TEST(DragCourse, EscapeBeforeTheReleaseIsNoDrop)
{
    DragCourse course(Taker::kDesktop);
    course.GiveUp();
    EXPECT_FALSE(course.Release(kPlace, Ground::kDesktop));
    EXPECT_FALSE(course.DropOnDesktop().has_value());
}

TEST(DragCourse, EscapeAfterTheReleaseIsTooLate)
{
    DragCourse course(Taker::kDesktop);
    EXPECT_TRUE(course.Release(kPlace, Ground::kDesktop));
    course.GiveUp();
    EXPECT_TRUE(course.DropOnDesktop().has_value());
}

TEST(DragCourse, OnlyTheFirstReleaseCounts)
{
    DragCourse onWindow(Taker::kDesktop);
    EXPECT_FALSE(onWindow.Release(kPlace, Ground::kProgram));
    EXPECT_FALSE(onWindow.Release(BPoint(1, 2), Ground::kDesktop));
    EXPECT_FALSE(onWindow.DropOnDesktop().has_value());

    DragCourse onDesktop(Taker::kDesktop);
    EXPECT_TRUE(onDesktop.Release(kPlace, Ground::kDesktop));
    EXPECT_FALSE(onDesktop.Release(BPoint(1, 2), Ground::kDesktop));
    EXPECT_EQ(*onDesktop.DropOnDesktop(), kPlace);
}

TEST(DragCourse, ADragWithoutAReleaseIsNoDrop)
{
    const DragCourse course(Taker::kDesktop);
    EXPECT_FALSE(course.DropOnDesktop().has_value());
}
