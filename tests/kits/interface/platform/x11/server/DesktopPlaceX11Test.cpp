// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/DesktopPlace.h"
#include "kits/interface/platform/x11/XWindows.h"
#include "tests/kits/interface/platform/x11/server/OtherProgram.h"

#include <QRasterWindow>

namespace {

using kits::DesktopLayer::Ground;

class DesktopPlace : public testing::Test {
protected:
    DesktopPlace()
    {
        if (std::getenv("QEL_OWN_DISPLAY") == nullptr)
            return;
        other = std::make_unique<OtherProgram>();
        atom = [this](const char* name) { return other->Atom(name); };
    }
    void SetUp() override
    {
        if (other == nullptr)
            GTEST_SKIP() << "needs a display of its own";
    }

    static Ground At(float x, float y) { return kits::DesktopPlace::GroundAt(kits::XServer(), BPoint(x, y)); }
    static bool IsDesktop(float x, float y) { return At(x, y) == Ground::kDesktop; }
    xcb_window_t ShowDesktop(bool isManaged) const { return other->Show(other->Screen(), false, isManaged); }
    void SetState(xcb_window_t window, const char* state) const
    {
        other->Set(window, "_NET_WM_STATE", XCB_ATOM_ATOM, {other->Atom(state)});
    }

    std::unique_ptr<OtherProgram> other;
    std::function<xcb_atom_t(const char*)> atom;
};

} // namespace

TEST_F(DesktopPlace, TheRootWindowIsAndOtherWindowsAreNot)
{
    other->Show(QRect(100, 100, 200, 100));
    EXPECT_TRUE(IsDesktop(99, 150));
    EXPECT_FALSE(IsDesktop(100, 150));
    EXPECT_FALSE(IsDesktop(299, 199));
    EXPECT_TRUE(IsDesktop(300, 199));
}

TEST_F(DesktopPlace, AWindowOfTheTypeDesktopIs)
{
    const xcb_window_t desktop = ShowDesktop(true);
    other->Set(desktop, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {atom("_NET_WM_WINDOW_TYPE_DESKTOP")});
    EXPECT_TRUE(IsDesktop(600, 500));
    other->Show(QRect(100, 100, 200, 100));
    EXPECT_FALSE(IsDesktop(150, 150));
    EXPECT_TRUE(IsDesktop(600, 500));
}

TEST_F(DesktopPlace, AWindowWithOurMarkBelongsToIt)
{
    const xcb_window_t chart = other->Show(QRect(100, 100, 200, 100));
    EXPECT_EQ(At(150, 150), Ground::kProgram);
    other->Set(chart, kits::DesktopPlace::kMark, XCB_ATOM_CARDINAL, {1});
    EXPECT_EQ(At(150, 150), Ground::kDesktopWindow);
    EXPECT_EQ(At(99, 150), Ground::kDesktop);
    EXPECT_EQ(kits::DesktopPlace::GroundOf(kits::XServer(), chart), Ground::kDesktopWindow);
    other->Destroy(chart);
    EXPECT_EQ(kits::DesktopPlace::GroundOf(kits::XServer(), chart), Ground::kProgram);
}

TEST_F(DesktopPlace, TheLowestWindowThatCoversTheScreenIsIfNoTaskBarShowsIt)
{
    const xcb_window_t window = ShowDesktop(true);
    EXPECT_FALSE(IsDesktop(600, 500)); // a program whose window is as large as the screen
    SetState(window, "_NET_WM_STATE_SKIP_TASKBAR");
    EXPECT_TRUE(IsDesktop(600, 500));
    SetState(window, "_NET_WM_STATE_BELOW");
    EXPECT_TRUE(IsDesktop(600, 500));
    other->Set(window, "_NET_WM_STATE", XCB_ATOM_ATOM,
               {atom("_NET_WM_STATE_SKIP_TASKBAR"), atom("_NET_WM_STATE_FULLSCREEN")});
    EXPECT_FALSE(IsDesktop(600, 500)); // a film or a game
    other->Destroy(window);
    ShowDesktop(false);
    EXPECT_TRUE(IsDesktop(600, 500));
}

TEST_F(DesktopPlace, ALowWindowThatCoversOnlyAPartIsNot)
{
    const QRect screen = other->Screen();
    other->Show(QRect(0, 0, screen.width(), screen.height() - 1), false, false);
    EXPECT_FALSE(IsDesktop(600, 500));
}

TEST_F(DesktopPlace, AWindowOverAnotherIsNotHoweverLarge)
{
    other->Show(QRect(100, 100, 200, 100));
    ShowDesktop(false);
    EXPECT_FALSE(IsDesktop(150, 150));
}

TEST_F(DesktopPlace, WindowsThatOnlyTakeInputAreLookedThrough)
{
    other->Show(QRect(100, 100, 200, 100));
    other->Show(other->Screen(), true);
    EXPECT_FALSE(IsDesktop(150, 150));
    EXPECT_TRUE(IsDesktop(600, 500));
}

TEST_F(DesktopPlace, WhatIsDraggedIsLookedThrough)
{
    QRasterWindow dragged;
    dragged.setFlags(Qt::ToolTip | Qt::WindowTransparentForInput);
    dragged.setGeometry(100, 100, 200, 100);
    dragged.show();
    other->Show(other->Screen(), true);
    EXPECT_TRUE(IsDesktop(150, 150));
}
