// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/X11Desktop.h"

#include "kits/interface/platform/desktops/DesktopWatch.h"
#include "kits/interface/platform/desktops/RootPicture.h"
#include "tests/support/Await.h"
#include "tests/support/BoundProcess.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>
#include <cstring>

using test::Await;

namespace kits {
namespace {

constexpr rgb_color kRed = make_color(200, 10, 20);
constexpr rgb_color kBlue = make_color(3, 4, 250);
constexpr rgb_color kGreen = make_color(0, 180, 7);

/// Another program that sets the background.
class Setter {
public:
    Setter()
        : fConnection(xcb_connect(nullptr, nullptr))
        , fPicture(fConnection.get())
        , fRoot(fPicture.Screen()->root)
    {
    }

    xcb_atom_t Atom(const char* name) const
    {
        const auto request = xcb_intern_atom(fConnection.get(), 0, static_cast<uint16_t>(std::strlen(name)), name);
        return XWindows::Answer<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(fConnection.get(), request, nullptr))
            ->atom;
    }
    /// Makes a picture with one colour above another.
    xcb_pixmap_t MakePicture(rgb_color above, rgb_color below) const
    {
        return MakePicture(above, below, Width(), Height());
    }
    xcb_pixmap_t MakePicture(rgb_color above, rgb_color below, uint16 width, uint16 height) const
    {
        const xcb_pixmap_t pixmap = xcb_generate_id(fConnection.get());
        xcb_create_pixmap(fConnection.get(), fPicture.Screen()->root_depth, pixmap, fRoot, width, height);
        Fill(pixmap, above, {0, 0, width, static_cast<uint16_t>(height / 2)});
        Fill(pixmap, below, {0, static_cast<int16_t>(height / 2), width, static_cast<uint16_t>(height / 2)});
        return pixmap;
    }
    /// Its resources stay when it ends, until somebody frees them.
    void RetainAll() const { xcb_set_close_down_mode(fConnection.get(), XCB_CLOSE_DOWN_RETAIN_PERMANENT); }
    std::vector<xcb_window_t> Windows() const
    {
        const XWindows::Answer<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(fConnection.get(), xcb_query_tree(fConnection.get(), fRoot), nullptr));
        const xcb_window_t* windows = xcb_query_tree_children(tree.get());
        return {windows, windows + xcb_query_tree_children_length(tree.get())};
    }
    void Fill(xcb_drawable_t drawable, rgb_color color, xcb_rectangle_t where) const
    {
        const xcb_gcontext_t context = xcb_generate_id(fConnection.get());
        const uint32 pixel = fPicture.PixelOf(color);
        xcb_create_gc(fConnection.get(), context, drawable, XCB_GC_FOREGROUND, &pixel);
        xcb_poly_fill_rectangle(fConnection.get(), drawable, context, 1, &where);
        xcb_free_gc(fConnection.get(), context);
    }
    void SetBackground(xcb_pixmap_t pixmap) const { Change(XCB_CW_BACK_PIXMAP, pixmap); }
    void SetBackground(rgb_color color) const { Change(XCB_CW_BACK_PIXEL, fPicture.PixelOf(color)); }
    void Name(const char* property, xcb_pixmap_t pixmap) const
    {
        xcb_change_property(fConnection.get(), XCB_PROP_MODE_REPLACE, fRoot, Atom(property), XCB_ATOM_PIXMAP, 32, 1,
                            &pixmap);
        Sync();
    }
    void SetNumber(const char* property, uint32 value) const
    {
        xcb_change_property(fConnection.get(), XCB_PROP_MODE_REPLACE, fRoot, Atom(property), XCB_ATOM_CARDINAL, 32, 1,
                            &value);
        Sync();
    }
    void Unname(const char* property) const
    {
        xcb_delete_property(fConnection.get(), fRoot, Atom(property));
        Sync();
    }
    xcb_pixmap_t Named(const char* property) const
    {
        const auto request = xcb_get_property(fConnection.get(), 0, fRoot, Atom(property), XCB_ATOM_PIXMAP, 0, 1);
        const XWindows::Answer<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(fConnection.get(), request, nullptr));
        return xcb_get_property_value_length(reply.get()) == 4
                   ? *static_cast<const xcb_pixmap_t*>(xcb_get_property_value(reply.get()))
                   : static_cast<xcb_pixmap_t>(XCB_NONE);
    }
    /// Does all of it: sets and announces a picture that the next setter may free.
    xcb_pixmap_t SetPicture(rgb_color above, rgb_color below) const
    {
        const xcb_pixmap_t pixmap = MakePicture(above, below);
        SetBackground(pixmap);
        Name("ESETROOT_PMAP_ID", pixmap);
        Name("_XROOTPMAP_ID", pixmap);
        return pixmap;
    }
    void Free(xcb_pixmap_t pixmap) const
    {
        xcb_free_pixmap(fConnection.get(), pixmap);
        Sync();
    }
    bool IsAlive(xcb_pixmap_t pixmap) const
    {
        const auto request = xcb_get_geometry(fConnection.get(), pixmap);
        return XWindows::Answer<xcb_get_geometry_reply_t>(
                   xcb_get_geometry_reply(fConnection.get(), request, nullptr)) != nullptr;
    }
    /// Returns what the screen shows.
    rgb_color PixelAt(int16 x, int16 y) const
    {
        const auto request = xcb_get_image(fConnection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, fRoot, x, y, 1, 1, UINT32_MAX);
        const XWindows::Answer<xcb_get_image_reply_t> image(xcb_get_image_reply(fConnection.get(), request, nullptr));
        uint32 pixel = 0; // of 24 bits, Xvfb's depth here
        std::memcpy(&pixel, xcb_get_image_data(image.get()), sizeof(pixel));
        return make_color(static_cast<uint8>(pixel >> 16), static_cast<uint8>(pixel >> 8), static_cast<uint8>(pixel));
    }
    rgb_color Above() const { return PixelAt(20, 30); }
    rgb_color Below() const { return PixelAt(20, static_cast<int16>(Height() - 30)); }
    /// A window over part of the screen; gone with the connection.
    void Cover(xcb_rectangle_t where) const
    {
        const uint32 values[] = {fPicture.PixelOf(kGreen), 1};
        const xcb_window_t window = xcb_generate_id(fConnection.get());
        xcb_create_window(fConnection.get(), XCB_COPY_FROM_PARENT, window, fRoot, where.x, where.y, where.width,
                          where.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
        xcb_map_window(fConnection.get(), window);
        Sync();
    }
    uint16 Width() const { return fPicture.Screen()->width_in_pixels; }
    uint16 Height() const { return fPicture.Screen()->height_in_pixels; }

private:
    void Change(uint32 what, uint32 value) const
    {
        xcb_change_window_attributes(fConnection.get(), fRoot, what, &value);
        xcb_clear_area(fConnection.get(), 0, fRoot, 0, 0, 0, 0);
        Sync();
    }
    void Sync() const
    {
        free(xcb_get_input_focus_reply(fConnection.get(), xcb_get_input_focus(fConnection.get()), nullptr));
    }

    XWindows::Connection fConnection;
    RootPicture fPicture;
    xcb_window_t fRoot;
};

class X11DesktopTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (getenv("QEL_OWN_DISPLAY") == nullptr)
            GTEST_SKIP() << "this would paint the display";
        setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
        other = std::make_unique<Setter>();
        for (const char* name : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID", "_XSETROOT_ID", "_KITS_DESKTOP_PAINT"})
            other->Unname(name);
        other->SetBackground(make_color(0, 0, 0));
        desktop = X11Desktop::Connect();
        ASSERT_NE(desktop, nullptr);
        desktop->Read(); // when the answer is here, the server also knows the requested events
        desktop->TakeNews();
    }

    BMessage PaintOver(rgb_color color)
    {
        const std::optional<BMessage> kept = desktop->Keep();
        EXPECT_TRUE(kept.has_value());
        EXPECT_TRUE(desktop->Paint(color, *kept));
        return *kept;
    }
    /// Leaves the picture of a program that has ended.
    static xcb_pixmap_t LeavePicture()
    {
        const Setter setter;
        setter.RetainAll();
        return setter.SetPicture(kRed, kGreen);
    }
    bool AwaitNews()
    {
        return Await([&] { return desktop->TakeNews(); });
    }

    TempFolder folder{TempFolder::Place::kMemory};
    std::unique_ptr<Setter> other;
    std::unique_ptr<DesktopBackend> desktop;
};

TEST_F(X11DesktopTest, ReadsAPlainBackgroundThatNobodyNames)
{
    other->SetBackground(kRed);
    EXPECT_EQ(desktop->Read(), kRed);
    EXPECT_TRUE(desktop->NeedsLooking());
}

TEST_F(X11DesktopTest, WindowsAreNotPartOfIt)
{
    other->SetBackground(kRed);
    other->Cover({100, 0, static_cast<uint16_t>(other->Width() - 150), other->Height()});
    EXPECT_EQ(desktop->Read(), kRed);
    other->Cover({0, 0, other->Width(), other->Height()});
    EXPECT_EQ(desktop->Read(), kRed);
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(kept.has_value());
    other->SetBackground(kBlue);
    EXPECT_EQ(desktop->Read(), kBlue);
}

TEST_F(X11DesktopTest, LookingShowsNothing)
{
    other->SetBackground(kRed);
    other->Cover({0, 0, static_cast<uint16_t>(other->Width() / 2), other->Height()});
    const std::vector<xcb_window_t> before = other->Windows();
    desktop->Read();
    EXPECT_TRUE(Await([&] { return other->Windows() == before; }));
}

/// A program that sets a background without naming it leaves the previous name.
TEST_F(X11DesktopTest, ANameCountsOnlyWhileItsPictureIsShown)
{
    other->SetPicture(kRed, kGreen);
    EXPECT_NE(desktop->Read(), kBlue);
    EXPECT_FALSE(desktop->NeedsLooking());
    other->SetBackground(kBlue);
    EXPECT_EQ(desktop->Read(), kBlue);
    EXPECT_TRUE(desktop->NeedsLooking());
    const BMessage kept = PaintOver(kGreen);
    EXPECT_TRUE(desktop->Restore(kept));
    EXPECT_EQ(other->Above(), kBlue);
    EXPECT_EQ(desktop->Read(), kBlue);
}

TEST_F(X11DesktopTest, ASmallPictureRepeats)
{
    const xcb_pixmap_t tile = other->MakePicture(kRed, kGreen, 7, 6);
    other->SetBackground(tile);
    other->Name("_XROOTPMAP_ID", tile);
    EXPECT_EQ(desktop->Read(), make_color(100, 95, 14));
    EXPECT_FALSE(desktop->NeedsLooking());
}

TEST_F(X11DesktopTest, WhatIsSetOverOurPaintWithoutANameStays)
{
    const BMessage kept = PaintOver(kBlue);
    EXPECT_TRUE(desktop->IsPainted());
    other->SetBackground(kGreen);
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(kept));
    EXPECT_EQ(other->Above(), kGreen);
    EXPECT_EQ(other->Named("_XROOTPMAP_ID"), XCB_NONE);
}

TEST_F(X11DesktopTest, AChangeForGoodFreesThePictureBefore)
{
    const xcb_pixmap_t picture = LeavePicture();
    EXPECT_TRUE(desktop->Change(kBlue, nullptr));
    EXPECT_EQ(other->Above(), kBlue);
    EXPECT_FALSE(other->IsAlive(picture));
    EXPECT_EQ(other->Named("_XROOTPMAP_ID"), other->Named("ESETROOT_PMAP_ID"));
    EXPECT_EQ(desktop->Read(), kBlue);
    // It is not ours to restore.
    desktop = X11Desktop::Connect();
    EXPECT_EQ(other->Above(), kBlue);
}

TEST_F(X11DesktopTest, AChangeForGoodFreesWhatWasPaintedAndWhatIsBelow)
{
    const xcb_pixmap_t picture = LeavePicture();
    const BMessage kept = PaintOver(kBlue);
    const xcb_pixmap_t painted = other->Named("_XROOTPMAP_ID");
    EXPECT_TRUE(desktop->Change(kGreen, &kept));
    EXPECT_FALSE(other->IsAlive(picture));
    EXPECT_FALSE(other->IsAlive(painted));
    EXPECT_EQ(other->Above(), kGreen);
    EXPECT_TRUE(desktop->Restore(kept));
    EXPECT_EQ(other->Above(), kGreen);
}

TEST_F(X11DesktopTest, ReadsTheAverageOfAPicture)
{
    other->SetPicture(make_color(0, 100, 255), make_color(100, 101, 0));
    EXPECT_EQ(desktop->Read(), make_color(50, 101, 128));
    EXPECT_FALSE(desktop->NeedsLooking());
}

TEST_F(X11DesktopTest, ReadsAPictureBehindWindows)
{
    other->SetPicture(kRed, kRed);
    other->Cover({0, 0, other->Width(), other->Height()});
    EXPECT_EQ(desktop->Read(), kRed);
}

TEST_F(X11DesktopTest, AnyOfItsNamesIsEnough)
{
    for (const char* name : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID", "_XSETROOT_ID"}) {
        const xcb_pixmap_t picture = other->MakePicture(kRed, kRed);
        other->SetBackground(picture);
        other->Name(name, picture);
        EXPECT_TRUE(AwaitNews()) << name;
        EXPECT_EQ(desktop->Read(), kRed) << name;
        other->Unname(name);
        EXPECT_TRUE(AwaitNews()) << name;
    }
}

TEST_F(X11DesktopTest, ANameOfNothingIsPassedOver)
{
    other->SetBackground(kBlue);
    other->Name("_XROOTPMAP_ID", 0x1fff0000);
    EXPECT_EQ(desktop->Read(), kBlue);
}

TEST_F(X11DesktopTest, PaintingShowsAndNamesAPixmap)
{
    other->SetBackground(kRed);
    PaintOver(kBlue);
    EXPECT_EQ(other->Above(), kBlue);
    EXPECT_EQ(other->Below(), kBlue);
    EXPECT_NE(other->Named("_XROOTPMAP_ID"), XCB_NONE);
    EXPECT_EQ(other->Named("_XROOTPMAP_ID"), other->Named("ESETROOT_PMAP_ID"));
    EXPECT_EQ(desktop->Read(), kBlue);
    EXPECT_TRUE(desktop->IsPainted());
}

TEST_F(X11DesktopTest, AnotherColourFreesThePixmapBefore)
{
    const BMessage kept = PaintOver(kBlue);
    const xcb_pixmap_t first = other->Named("_XROOTPMAP_ID");
    EXPECT_TRUE(desktop->Paint(kRed, kept));
    EXPECT_EQ(other->Above(), kRed);
    EXPECT_NE(other->Named("_XROOTPMAP_ID"), first);
    EXPECT_FALSE(other->IsAlive(first));
}

TEST_F(X11DesktopTest, PutsAPlainBackgroundBack)
{
    other->SetBackground(kRed);
    const BMessage kept = PaintOver(kBlue);
    const xcb_pixmap_t ours = other->Named("_XROOTPMAP_ID");
    EXPECT_TRUE(desktop->Restore(kept));
    EXPECT_EQ(other->Above(), kRed);
    for (const char* name : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID", "_XSETROOT_ID"})
        EXPECT_EQ(other->Named(name), XCB_NONE) << name;
    EXPECT_FALSE(other->IsAlive(ours));
}

TEST_F(X11DesktopTest, PutsAPictureBack)
{
    const xcb_pixmap_t picture = other->SetPicture(kRed, kGreen);
    const BMessage kept = PaintOver(kBlue);
    EXPECT_TRUE(other->IsAlive(picture));
    EXPECT_EQ(other->Below(), kBlue);
    EXPECT_TRUE(desktop->Restore(kept));
    EXPECT_EQ(other->Above(), kRed);
    EXPECT_EQ(other->Below(), kGreen);
    EXPECT_EQ(other->Named("_XROOTPMAP_ID"), picture);
    EXPECT_EQ(other->Named("ESETROOT_PMAP_ID"), picture);
    EXPECT_FALSE(desktop->IsPainted());
}

TEST_F(X11DesktopTest, EachNameIsPutBackAsItWas)
{
    const xcb_pixmap_t picture = other->MakePicture(kRed, kGreen);
    other->SetBackground(picture);
    other->Name("_XSETROOT_ID", picture);
    const BMessage kept = PaintOver(kBlue);
    EXPECT_EQ(other->Named("_XSETROOT_ID"), XCB_NONE);
    EXPECT_TRUE(desktop->Restore(kept));
    EXPECT_EQ(other->Named("_XSETROOT_ID"), picture);
    EXPECT_EQ(other->Named("_XROOTPMAP_ID"), XCB_NONE);
    EXPECT_EQ(other->Below(), kGreen);
}

TEST_F(X11DesktopTest, APictureThatWentAwayLeavesItsAverage)
{
    const xcb_pixmap_t picture = other->SetPicture(make_color(0, 0, 100), make_color(0, 0, 200));
    const BMessage kept = PaintOver(kRed);
    other->Free(picture);
    EXPECT_TRUE(desktop->Restore(kept));
    EXPECT_EQ(other->Above(), make_color(0, 0, 150));
}

TEST_F(X11DesktopTest, APictureWithoutANameIsNotPaintedOver)
{
    const xcb_pixmap_t picture = other->MakePicture(make_color(0, 0, 100), make_color(0, 0, 200));
    other->SetBackground(picture);
    other->Free(picture);
    EXPECT_EQ(desktop->Read(), make_color(0, 0, 150));
    EXPECT_FALSE(desktop->Keep().has_value());
}

TEST_F(X11DesktopTest, WhatOthersSetOverItStays)
{
    const BMessage kept = PaintOver(kBlue);
    desktop->TakeNews();
    const xcb_pixmap_t picture = other->SetPicture(kGreen, kGreen);
    EXPECT_TRUE(AwaitNews());
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(kept));
    EXPECT_EQ(other->Named("_XROOTPMAP_ID"), picture);
    EXPECT_EQ(other->Above(), kGreen);
}

TEST_F(X11DesktopTest, WhatAnotherServerKeptIsDroppedHere)
{
    const BMessage kept = PaintOver(kBlue);
    other->Unname("_KITS_DESKTOP_PAINT");
    EXPECT_TRUE(desktop->Restore(kept));
    EXPECT_EQ(other->Above(), kBlue);
}

TEST_F(X11DesktopTest, AKilledProgramLeavesItPaintedAndTheNextPutsItBack)
{
    const xcb_pixmap_t picture = other->SetPicture(kRed, kGreen);
    const pid_t child = test::ForkBound();
    if (child == 0) {
        DesktopWatch watch(X11Desktop::Connect, make_color(1, 1, 1));
        watch.Set(kBlue, true);
        for (;;)
            pause();
    }
    EXPECT_TRUE(Await([&] { return other->Below() == kBlue; }));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(folder.Has("kits-desktop.kept"));
    EXPECT_EQ(other->Below(), kBlue);

    const DesktopWatch watch(X11Desktop::Connect, make_color(1, 1, 1));
    EXPECT_TRUE(Await([&] { return !folder.Has("kits-desktop.kept"); }));
    EXPECT_EQ(other->Above(), kRed);
    EXPECT_EQ(other->Below(), kGreen);
    EXPECT_EQ(other->Named("_XROOTPMAP_ID"), picture);
}

TEST_F(X11DesktopTest, KnowsTheWorkspaceThatIsShown)
{
    EXPECT_EQ(X11Desktop::CurrentWorkspace(), 0);
    other->SetNumber("_NET_CURRENT_DESKTOP", 3);
    EXPECT_EQ(X11Desktop::CurrentWorkspace(), 3);
    other->Unname("_NET_CURRENT_DESKTOP");
}

TEST_F(X11DesktopTest, TheWatchFollowsOtherPrograms)
{
    DesktopWatch watch(X11Desktop::Connect, make_color(1, 1, 1));
    for (const rgb_color color : {kRed, kBlue, kGreen}) {
        other->SetPicture(color, color);
        EXPECT_TRUE(Await([&] { return watch.Get() == color; }));
    }
}

} // namespace
} // namespace kits
