// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/StayShown.h"

#include <QWindow>

#include <gtest/gtest.h>

using kits::StayShown::Way;
using kits::StayShown::WayFor;

TEST(StayShown, KnowsWindowManagersByTheirNames)
{
    EXPECT_EQ(WayFor("KWin"), Way::kTransient);
    for (const char* name : {"Metacity (Marco)", "Metacity", "GNOME Shell", "Mutter (Muffin)", "Mutter(Gala)"})
        EXPECT_EQ(WayFor(name), Way::kTransientForAny) << name;
    EXPECT_EQ(WayFor("Openbox"), Way::kSplash);
    for (const char* name : {"Xfwm4", "i3", "Some other manager", ""})
        EXPECT_EQ(WayFor(name), Way::kNone) << name;
}

TEST(StayShown, DoesNothingWithoutAnXServer)
{
    QWindow window;
    kits::StayShown::Keep(window);
    kits::StayShown::LookAgain();
    EXPECT_EQ(window.handle(), nullptr);
}
