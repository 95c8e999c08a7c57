#include "kits/interface/dragging/DragCourse.h"

#include <gtest/gtest.h>

namespace {

using kits::DragCourse;

constexpr bool kOnDesktop = true;
constexpr bool kElsewhere = false;
const BPoint kPlace(700, 500);

} // namespace

TEST(DragCourse, AnArchiveReleasedOverTheDesktopIsADropThere)
{
    // The same for the root window, for a desktop that would accept the drop and for one that would refuse it: none of
    // them is offered it.
    DragCourse course(true);
    EXPECT_TRUE(course.Release(kPlace, kOnDesktop));
    ASSERT_TRUE(course.DropOnDesktop().has_value());
    EXPECT_EQ(*course.DropOnDesktop(), kPlace);
}

TEST(DragCourse, AnArchiveReleasedOverAnotherWindowIsLeftToTheToolkit)
{
    DragCourse course(true);
    EXPECT_FALSE(course.Release(kPlace, kElsewhere));
    EXPECT_FALSE(course.DropOnDesktop().has_value());
}

TEST(DragCourse, WhatIsForOtherProgramsIsLeftToTheToolkitOverTheDesktopToo)
{
    DragCourse course(false);
    EXPECT_FALSE(course.IsForDesktop());
    EXPECT_FALSE(course.Release(kPlace, kOnDesktop));
    EXPECT_FALSE(course.DropOnDesktop().has_value());
}

TEST(DragCourse, EscapeBeforeTheReleaseIsNoDrop)
{
    DragCourse course(true);
    course.GiveUp();
    EXPECT_FALSE(course.Release(kPlace, kOnDesktop));
    EXPECT_FALSE(course.DropOnDesktop().has_value());
}

TEST(DragCourse, EscapeAfterTheReleaseIsTooLate)
{
    DragCourse course(true);
    EXPECT_TRUE(course.Release(kPlace, kOnDesktop));
    course.GiveUp();
    EXPECT_TRUE(course.DropOnDesktop().has_value());
}

TEST(DragCourse, OnlyTheFirstReleaseCounts)
{
    DragCourse onWindow(true);
    EXPECT_FALSE(onWindow.Release(kPlace, kElsewhere));
    EXPECT_FALSE(onWindow.Release(BPoint(1, 2), kOnDesktop));
    EXPECT_FALSE(onWindow.DropOnDesktop().has_value());

    DragCourse onDesktop(true);
    EXPECT_TRUE(onDesktop.Release(kPlace, kOnDesktop));
    EXPECT_FALSE(onDesktop.Release(BPoint(1, 2), kOnDesktop));
    EXPECT_EQ(*onDesktop.DropOnDesktop(), kPlace);
}

TEST(DragCourse, ADragWithoutAReleaseIsNoDrop)
{
    const DragCourse course(true);
    EXPECT_FALSE(course.DropOnDesktop().has_value());
}
