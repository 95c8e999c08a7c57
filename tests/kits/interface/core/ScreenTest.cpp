// SPDX-License-Identifier: MIT
#include "kits/interface/Screen.h"

#include "kits/interface/InterfaceDefs.h"

#include <gtest/gtest.h>

TEST(Screen, HasAFrameOfInclusivePixels)
{
    const BScreen screen;
    // The main screen is at the origin, and a screen with an even number of pixels has an odd width.
    EXPECT_EQ(screen.Frame().LeftTop(), BPoint(0, 0));
    EXPECT_EQ(static_cast<int32>(screen.Frame().Width()) % 2, 1);
    EXPECT_EQ(screen.WaitForRetrace(), B_OK);
}

TEST(Screen, GivesTheDesktopColourThatWasSetUntilItIsPutBack)
{
    constexpr rgb_color kUnknown = make_color(51, 102, 152);
    BScreen screen(nullptr);
    EXPECT_EQ(screen.DesktopColor(), kUnknown);
    screen.RestoreDesktop();
    EXPECT_EQ(screen.DesktopColor(), kUnknown);
    screen.SetDesktopColor(make_color(1, 2, 3, 0), true);
    screen.SetDesktopColor(make_color(4, 5, 6, 0), false);
    EXPECT_EQ(BScreen().DesktopColor(), make_color(4, 5, 6));
    BScreen().RestoreDesktop();
    EXPECT_EQ(screen.DesktopColor(), kUnknown);
}

TEST(InterfaceDefs, TheTransparentColourIsTheMagicWord)
{
    EXPECT_EQ(B_TRANSPARENT_COLOR, B_TRANSPARENT_32_BIT);
    EXPECT_EQ(static_cast<uint32>(B_TRANSPARENT_COLOR.alpha) << 24 | B_TRANSPARENT_COLOR.red << 16 |
                  B_TRANSPARENT_COLOR.green << 8 | B_TRANSPARENT_COLOR.blue,
              B_TRANSPARENT_MAGIC_RGBA32);
    EXPECT_EQ(ui_color(B_PANEL_BACKGROUND_COLOR).alpha, 255);
    EXPECT_NE(ui_color(B_PANEL_BACKGROUND_COLOR), ui_color(B_PANEL_TEXT_COLOR));
    EXPECT_EQ(beep(), B_OK);
}
