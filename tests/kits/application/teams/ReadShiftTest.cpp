// SPDX-License-Identifier: MIT
#include "kits/application/teams/ReadShift.h"

#include <gtest/gtest.h>
#include <poll.h>

using kits::ReadShift;

namespace {

/// Returns whether the timer goes off within that time.
bool IsReadable(const ReadShift& shift, int milliseconds)
{
    pollfd descriptor{shift.Descriptor(), POLLIN, 0};
    return poll(&descriptor, 1, milliseconds) == 1;
}

constexpr int kLong = 30000;

} // namespace

TEST(ReadShift, IsTheMainThreadsWhenThatWaits)
{
    ReadShift shift;
    EXPECT_FALSE(shift.IsMains());
    shift.MainWorks();
    EXPECT_FALSE(shift.IsMains());
    EXPECT_TRUE(shift.MainWaits());
    EXPECT_TRUE(shift.IsMains());
    EXPECT_FALSE(shift.MainWaits());
    shift.MainWorks();
    EXPECT_TRUE(shift.IsMains());
    shift.End();
    EXPECT_FALSE(shift.IsMains());
    EXPECT_TRUE(shift.MainWaits());
}

TEST(ReadShift, EndsWhenTheMainThreadWorksForTooLong)
{
    ReadShift shift;
    shift.MainWaits();
    shift.MainWorks();
    EXPECT_TRUE(IsReadable(shift, kLong));
    shift.Check();
    EXPECT_FALSE(shift.IsMains());
    EXPECT_FALSE(IsReadable(shift, 0));
    EXPECT_TRUE(shift.MainWaits());
}

TEST(ReadShift, GoesOnWhenTheMainThreadIsBackInTime)
{
    ReadShift shift;
    shift.MainWaits();
    shift.MainWorks();
    EXPECT_TRUE(IsReadable(shift, kLong));
    // Just before the other thread looks.
    EXPECT_FALSE(shift.MainWaits());
    EXPECT_FALSE(IsReadable(shift, 0));
    shift.Check();
    EXPECT_TRUE(shift.IsMains());
}
