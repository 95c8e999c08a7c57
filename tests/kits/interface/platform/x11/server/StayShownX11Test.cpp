// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/StayShown.h"
#include "tests/kits/interface/platform/x11/server/OtherProgram.h"
#include "tests/support/GuiTest.h"

#include <QRasterWindow>

#include <algorithm>

namespace {

using Words = std::vector<uint32_t>;

/// A window that stays shown, and a program that plays the window manager and the desktop.
class StayShown : public testing::Test {
protected:
    StayShown()
    {
        if (std::getenv("QEL_OWN_DISPLAY") == nullptr)
            return;
        other = std::make_unique<OtherProgram>();
        check = other->Show(QRect(0, 0, 1, 1));
    }
    void SetUp() override
    {
        if (other == nullptr)
            GTEST_SKIP() << "needs a display of its own";
        window = std::make_unique<QRasterWindow>();
        window->setFlags(Qt::FramelessWindowHint);
        window->setGeometry(100, 100, 200, 100);
        window->create();
        kits::StayShown::Keep(*window);
        window->show();
        types = other->Get(Id(), "_NET_WM_WINDOW_TYPE");
    }

    xcb_window_t Id() const { return static_cast<xcb_window_t>(window->winId()); }
    /// Another window manager takes over.
    void Manage(const char* name) const
    {
        other->SetText(check, "_NET_WM_NAME", name);
        other->Set(other->Root(), "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {check});
    }
    void SetClients(const Words& clients) const
    {
        other->Set(other->Root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, clients);
    }
    xcb_window_t MakeDesktop() const
    {
        const xcb_window_t desktop = other->Show(other->Screen());
        other->Set(desktop, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {other->Atom("_NET_WM_WINDOW_TYPE_DESKTOP")});
        return desktop;
    }
    /// Returns a window of the type "desktop" that is not among those given, or NONE.
    xcb_window_t DesktopBut(const Words& known) const
    {
        for (const xcb_window_t one : other->Windows())
            if (other->Get(one, "_NET_WM_WINDOW_TYPE") == Words{other->Atom("_NET_WM_WINDOW_TYPE_DESKTOP")} &&
                std::find(known.begin(), known.end(), one) == known.end())
                return one;
        return XCB_NONE;
    }
    bool AwaitParent(const Words& parent) const
    {
        return test::WaitFor([&] { return other->Get(Id(), "WM_TRANSIENT_FOR") == parent; });
    }
    bool AwaitTypes(const Words& wanted) const
    {
        return test::WaitFor([&] { return other->Get(Id(), "_NET_WM_WINDOW_TYPE") == wanted; });
    }

    std::unique_ptr<OtherProgram> other;
    xcb_window_t check = XCB_NONE;
    std::unique_ptr<QRasterWindow> window;
    Words types; ///< as the toolkit sets them
};

} // namespace

TEST_F(StayShown, AsTransientForTheDesktopThatIsThere)
{
    Manage("KWin");
    const xcb_window_t first = MakeDesktop();
    SetClients({first, Id()});
    EXPECT_TRUE(AwaitParent({first}));
    // The program that draws the desktop starts again.
    SetClients({Id()});
    EXPECT_TRUE(AwaitParent({}));
    const xcb_window_t second = MakeDesktop();
    SetClients({Id(), second});
    EXPECT_TRUE(AwaitParent({second}));
    EXPECT_EQ(other->Get(Id(), "_NET_WM_WINDOW_TYPE"), types);
}

TEST_F(StayShown, AsASplashWhereOnlyThatHelps)
{
    const Words splash = {other->Atom("_NET_WM_WINDOW_TYPE_SPLASH"), other->Atom("_NET_WM_WINDOW_TYPE_NORMAL")};
    Manage("Openbox");
    SetClients({MakeDesktop(), Id()});
    EXPECT_TRUE(AwaitTypes(splash));
    // The toolkit sets its own again whenever a flag changes.
    window->setFlag(Qt::WindowDoesNotAcceptFocus);
    kits::StayShown::LookAgain();
    EXPECT_TRUE(AwaitTypes(splash));
    EXPECT_TRUE(other->Get(Id(), "WM_TRANSIENT_FOR").empty());
}

TEST_F(StayShown, AsTheNextWindowManagerWantsIt)
{
    const xcb_window_t desktop = MakeDesktop();
    Manage("Openbox");
    SetClients({desktop, Id()});
    EXPECT_TRUE(test::WaitFor([&] { return other->Get(Id(), "_NET_WM_WINDOW_TYPE") != types; }));
    Manage("Metacity (Marco)");
    EXPECT_TRUE(AwaitParent({desktop}));
    EXPECT_TRUE(AwaitTypes(types));
    Manage("Xfwm4");
    EXPECT_TRUE(AwaitParent({}));
    EXPECT_TRUE(AwaitTypes(types));
}

TEST_F(StayShown, AgainWhenItIsShownAgain)
{
    Manage("KWin");
    const xcb_window_t desktop = MakeDesktop();
    SetClients({desktop, Id()});
    EXPECT_TRUE(AwaitParent({desktop}));
    window->hide();
    SetClients({desktop});
    window->show(); // the toolkit takes it back
    EXPECT_TRUE(AwaitParent({}));
    SetClients({desktop, Id()});
    EXPECT_TRUE(AwaitParent({desktop}));
}

TEST_F(StayShown, AsTransientForAWindowOfOursWhereNoProgramDrawsTheDesktop)
{
    Manage("GNOME Shell");
    SetClients({Id()});
    xcb_window_t own = XCB_NONE;
    ASSERT_TRUE(test::WaitFor([&] { return (own = DesktopBut({})) != XCB_NONE; }));
    EXPECT_TRUE(other->Get(Id(), "WM_TRANSIENT_FOR").empty()) << "the window manager does not know that window yet";
    SetClients({Id(), own});
    EXPECT_TRUE(AwaitParent({own}));
    // It accepts no focus.
    EXPECT_EQ(other->Get(own, "WM_HINTS")[1], 0U);

    const xcb_window_t desktop = MakeDesktop();
    SetClients({own, Id(), desktop});
    EXPECT_TRUE(AwaitParent({desktop}));
    EXPECT_TRUE(test::WaitFor([&] { return DesktopBut({desktop}) == XCB_NONE; }));

    SetClients({Id()});
    other->Destroy(desktop);
    ASSERT_TRUE(test::WaitFor([&] { return (own = DesktopBut({})) != XCB_NONE; }));
    SetClients({Id(), own});
    EXPECT_TRUE(AwaitParent({own}));
    Manage("Xfwm4");
    EXPECT_TRUE(AwaitParent({}));
    EXPECT_TRUE(test::WaitFor([&] { return DesktopBut({}) == XCB_NONE; }));
}

TEST_F(StayShown, WithoutAWindowOfOursWhereThatWouldCoverTheScreen)
{
    const xcb_window_t desktop = MakeDesktop();
    Manage("KWin");
    SetClients({Id(), desktop});
    EXPECT_TRUE(AwaitParent({desktop}));
    SetClients({Id()});
    other->Destroy(desktop);
    EXPECT_TRUE(AwaitParent({}));
    EXPECT_EQ(DesktopBut({}), static_cast<xcb_window_t>(XCB_NONE));
}
