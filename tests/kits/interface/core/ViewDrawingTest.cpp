// SPDX-License-Identifier: MIT
#include "kits/interface/Bitmap.h"
#include "kits/interface/View.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/WindowImpl.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32 kWhite = 0xFFFFFFFF;
constexpr uint32 kRed = 0xFFFF0000;
constexpr uint32 kGreen = 0xFF00FF00;

/// Records the rectangles that it is asked to draw, and fills them with red.
class Painter : public BView {
public:
    explicit Painter(BRect frame, uint32 mode = 0, uint32 flags = B_WILL_DRAW)
        : BView(frame, "painter", mode, flags)
    {
    }

    void Draw(BRect update) override
    {
        updates.push_back(update);
        SetHighColor(255, 0, 0);
        if (paints)
            FillRect(Bounds());
    }

    std::vector<BRect> updates;
    bool paints = true;
};

class ViewDrawing : public testing::Test {
protected:
    ViewDrawing()
        : window(new BWindow(BRect(100, 100, 199, 149), "stage", B_TITLED_WINDOW, 0))
    {
    }
    ~ViewDrawing() override
    {
        window->Quit();
        test::Turn();
    }
    Painter* AddPainter(BRect frame, uint32 mode = 0, uint32 flags = B_WILL_DRAW)
    {
        auto* painter = new Painter(frame, mode, flags);
        window->AddChild(painter);
        return painter;
    }
    void Show() { test::Show(window); }
    /// As the kit does with a part that was uncovered.
    static void Invalidate(Painter* painter, BRect rect)
    {
        kits::ViewImpl::Of(painter).Invalidate(kits::ToPixels(rect));
    }

    BWindow* window;
};

} // namespace

TEST_F(ViewDrawing, IsDrawnWholeWhenItIsFirstShown)
{
    Painter* painter = AddPainter(BRect(10, 10, 29, 19));
    test::Turn();
    EXPECT_TRUE(painter->updates.empty());
    Show();
    ASSERT_EQ(painter->updates.size(), 1U);
    EXPECT_EQ(painter->updates[0], BRect(0, 0, 19, 9));
    EXPECT_EQ(test::PixelOf(painter, 0, 0), kRed);
    EXPECT_EQ(test::PixelOf(window, 10, 10), kRed);
    EXPECT_EQ(test::PixelOf(window, 29, 19), kRed);
    EXPECT_NE(test::PixelOf(window, 30, 19), kRed);
    EXPECT_NE(test::PixelOf(window, 9, 10), kRed);
}

TEST_F(ViewDrawing, InvalidatedRectanglesAreDrawnTogetherAndClipped)
{
    Painter* painter = AddPainter(BRect(0, 0, 49, 29));
    Show();
    painter->SetHighColor(0, 255, 0);
    painter->FillRect(painter->Bounds());
    painter->updates.clear();
    Invalidate(painter, BRect(5, 5, 9, 9));
    Invalidate(painter, BRect(8, 8, 14, 11));
    EXPECT_TRUE(painter->updates.empty());
    test::Turn();
    ASSERT_EQ(painter->updates.size(), 1U);
    EXPECT_EQ(painter->updates[0], BRect(5, 5, 14, 11));
    EXPECT_EQ(test::PixelOf(painter, 4, 5), kGreen);
    EXPECT_EQ(test::PixelOf(painter, 5, 5), kRed);
    EXPECT_EQ(test::PixelOf(painter, 14, 11), kRed);
    EXPECT_EQ(test::PixelOf(painter, 15, 11), kGreen);
    painter->updates.clear();
    Invalidate(painter, BRect(50, 0, 60, 9));
    Invalidate(painter, BRect(5, 5, 4, 9));
    test::Turn();
    EXPECT_TRUE(painter->updates.empty());
}

TEST_F(ViewDrawing, TheViewColourIsThereBeforeDraw)
{
    Painter* painter = AddPainter(BRect(0, 0, 49, 29));
    painter->paints = false;
    painter->SetViewColor(0, 255, 0);
    Show();
    EXPECT_EQ(test::PixelOf(painter, 49, 29), kGreen);
    painter->SetHighColor(0, 0, 255);
    painter->FillRect(painter->Bounds());
    Invalidate(painter, BRect(0, 0, 9, 9));
    test::Turn();
    EXPECT_EQ(test::PixelOf(painter, 9, 9), kGreen);
    EXPECT_EQ(test::PixelOf(painter, 10, 9), 0xFF0000FF);
}

TEST_F(ViewDrawing, WhatDrawsNothingTakesNoMemoryForWords)
{
    Painter* painter = AddPainter(BRect(0, 0, 49, 29));
    painter->paints = false;
    painter->SetViewColor(0, 255, 0);
    Show();
    EXPECT_EQ(painter->updates.size(), 1U);
    EXPECT_FALSE(kits::ViewImpl::Of(painter).fSurface.Exists());
    EXPECT_EQ(test::PixelOf(window, 49, 29), kGreen);
    painter->SetViewColor(255, 0, 0);
    painter->Invalidate();
    test::Turn();
    EXPECT_FALSE(kits::ViewImpl::Of(painter).fSurface.Exists());
    EXPECT_EQ(test::PixelOf(window, 49, 29), kRed);
    painter->SetHighColor(0, 255, 0);
    painter->FillRect(BRect(3, 3, 4, 4));
    test::Turn();
    EXPECT_TRUE(kits::ViewImpl::Of(painter).fSurface.Exists());
    EXPECT_EQ(test::PixelOf(window, 4, 4), kGreen);
    EXPECT_EQ(test::PixelOf(window, 5, 4), kRed);
}

TEST_F(ViewDrawing, DrawingOutsideOfDrawStaysInThePicture)
{
    Painter* painter = AddPainter(BRect(0, 0, 49, 29));
    painter->paints = false;
    Show();
    painter->SetHighColor(0, 255, 0);
    painter->StrokeLine(BPoint(3, 3), BPoint(3, 20));
    EXPECT_EQ(test::PixelOf(painter, 3, 20), kGreen);
    test::Turn();
    EXPECT_EQ(test::PixelOf(window, 3, 3), kGreen);
    EXPECT_EQ(test::PixelOf(window, 4, 3), kWhite);
    // When the system asks again, the pixels come from the picture, not from Draw.
    painter->updates.clear();
    EXPECT_EQ(test::PixelOf(window, 3, 20), kGreen);
    EXPECT_TRUE(painter->updates.empty());
}

TEST_F(ViewDrawing, ATransparentViewShowsItsParent)
{
    Painter* below = AddPainter(BRect(0, 0, 49, 29));
    auto* above = new BView(BRect(10, 10, 29, 19), "above", 0, B_WILL_DRAW);
    above->SetViewColor(B_TRANSPARENT_COLOR);
    below->AddChild(above);
    Show();
    EXPECT_EQ(test::PixelOf(window, 15, 15), kRed);
    above->SetHighColor(0, 255, 0);
    above->FillRect(BRect(0, 0, 4, 4));
    test::Turn();
    EXPECT_EQ(test::PixelOf(window, 14, 14), kGreen);
    EXPECT_EQ(test::PixelOf(window, 15, 15), kRed);
    // The magic colour leaves transparent pixels, whether it is stroked or copied.
    above->SetLowColor(B_TRANSPARENT_COLOR);
    above->FillRect(BRect(0, 0, 1, 1), B_SOLID_LOW);
    test::Turn();
    EXPECT_EQ(test::PixelOf(above, 0, 0), 0U);
    EXPECT_EQ(test::PixelOf(window, 10, 10), kRed);
    EXPECT_EQ(test::PixelOf(window, 12, 12), kGreen);
}

TEST_F(ViewDrawing, BitmapsAreShownOpaqueButForTheMagicWord)
{
    Painter* below = AddPainter(BRect(0, 0, 49, 29));
    auto* above = new BView(BRect(10, 10, 11, 10), "above", 0, B_WILL_DRAW);
    above->SetViewColor(B_TRANSPARENT_COLOR);
    below->AddChild(above);
    Show();
    BBitmap bitmap(BRect(0, 0, 1, 0), B_RGB32);
    auto* words = static_cast<uint32*>(bitmap.Bits());
    words[0] = 0x000000FF;
    words[1] = B_TRANSPARENT_MAGIC_RGBA32;
    above->DrawBitmap(&bitmap, bitmap.Bounds(), bitmap.Bounds());
    test::Turn();
    EXPECT_EQ(test::PixelOf(window, 10, 10), 0xFF0000FF);
    EXPECT_EQ(test::PixelOf(window, 11, 10), kRed);
}

TEST_F(ViewDrawing, GrowingUncoversAndShrinkingDoesNot)
{
    Painter* painter = AddPainter(BRect(0, 0, 49, 29));
    Painter* full = AddPainter(BRect(60, 0, 69, 9), 0, B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE);
    Show();
    painter->updates.clear();
    painter->ResizeTo(49, 34);
    test::Turn();
    ASSERT_EQ(painter->updates.size(), 1U);
    EXPECT_EQ(painter->updates[0], BRect(0, 30, 49, 34));
    painter->updates.clear();
    painter->ResizeTo(20, 20);
    test::Turn();
    EXPECT_TRUE(painter->updates.empty());
    EXPECT_EQ(test::PixelOf(painter, 20, 20), kRed);
    full->updates.clear();
    full->ResizeTo(4, 4);
    test::Turn();
    ASSERT_EQ(full->updates.size(), 1U);
    EXPECT_EQ(full->updates[0], BRect(0, 0, 4, 4));
}

TEST_F(ViewDrawing, NothingIsDrawnOrShownWhileItCannotBeSeen)
{
    Painter* painter = AddPainter(BRect(0, 0, 49, 29));
    Show();
    window->Minimize(true);
    EXPECT_TRUE(test::WaitFor([&] { return !kits::WindowImpl::Of(window).CanShow(); }));
    test::Turn();
    painter->updates.clear();
    painter->Invalidate();
    painter->SetHighColor(0, 255, 0);
    painter->StrokeLine(BPoint(0, 0), BPoint(0, 0));
    test::Turn();
    EXPECT_TRUE(painter->updates.empty());
    EXPECT_EQ(test::PixelOf(painter, 0, 0), kGreen);
    // A window manager takes its time to hear of it.
    EXPECT_TRUE(test::WaitFor([&] {
        window->Minimize(false);
        return kits::WindowImpl::Of(window).CanShow();
    }));
    test::Turn();
    EXPECT_EQ(painter->updates.size(), 1U);
    EXPECT_EQ(test::PixelOf(window, 0, 0), kRed);
}

TEST_F(ViewDrawing, UpdatesCanBeHeldBack)
{
    Painter* painter = AddPainter(BRect(0, 0, 49, 29));
    Show();
    painter->updates.clear();
    window->DisableUpdates();
    window->DisableUpdates();
    painter->Invalidate();
    test::Turn();
    window->EnableUpdates();
    test::Turn();
    EXPECT_TRUE(painter->updates.empty());
    window->EnableUpdates();
    test::Turn();
    EXPECT_EQ(painter->updates.size(), 1U);
}

TEST_F(ViewDrawing, AViewThatDoesNotDrawShowsItsColour)
{
    auto* plain = new BView(BRect(0, 0, 9, 9), "plain", 0, 0);
    plain->SetViewColor(0, 255, 0);
    window->AddChild(plain);
    Show();
    EXPECT_EQ(test::PixelOf(window, 5, 5), kGreen);
    plain->SetViewColor(255, 0, 0);
    plain->Invalidate();
    test::Turn();
    EXPECT_EQ(test::PixelOf(window, 5, 5), kRed);
}

TEST_F(ViewDrawing, OverModeLeavesLowAndTransparentPixelsOut)
{
    Painter* painter = AddPainter(BRect(0, 0, 49, 29));
    Show();
    painter->SetDrawingMode(B_OP_OVER);
    painter->FillRect(painter->Bounds(), B_SOLID_LOW);
    EXPECT_EQ(test::PixelOf(painter, 3, 3), kRed);
    BBitmap bitmap(BRect(0, 0, 0, 0), B_RGB32);
    *static_cast<uint32*>(bitmap.Bits()) = B_TRANSPARENT_MAGIC_RGBA32;
    painter->DrawBitmap(&bitmap, bitmap.Bounds(), BRect(3, 3, 3, 3));
    EXPECT_EQ(test::PixelOf(painter, 3, 3), kRed);
    painter->SetDrawingMode(B_OP_COPY);
    painter->DrawBitmap(&bitmap, bitmap.Bounds(), BRect(3, 3, 3, 3));
    EXPECT_EQ(test::PixelOf(painter, 3, 3), 0U);
}

TEST_F(ViewDrawing, StrokedRectanglesAreOnePixelWide)
{
    Painter* painter = AddPainter(BRect(0, 0, 49, 29));
    Show();
    painter->SetHighColor(0, 255, 0);
    painter->StrokeRect(painter->Bounds());
    EXPECT_EQ(test::PixelOf(painter, 0, 0), kGreen);
    EXPECT_EQ(test::PixelOf(painter, 49, 0), kGreen);
    EXPECT_EQ(test::PixelOf(painter, 0, 29), kGreen);
    EXPECT_EQ(test::PixelOf(painter, 49, 29), kGreen);
    EXPECT_EQ(test::PixelOf(painter, 25, 29), kGreen);
    EXPECT_EQ(test::PixelOf(painter, 1, 1), kRed);
    EXPECT_EQ(test::PixelOf(painter, 48, 28), kRed);
}

TEST_F(ViewDrawing, DrawMayRemoveAndDeleteTheView)
{
    struct Fleeting : BView {
        using BView::BView;
        void Draw(BRect) override
        {
            RemoveSelf();
            delete this;
        }
    };
    window->AddChild(new Fleeting(BRect(0, 0, 9, 9), "gone", 0, B_WILL_DRAW));
    Painter* painter = AddPainter(BRect(20, 0, 29, 9));
    Show();
    EXPECT_EQ(window->CountChildren(), 1);
    EXPECT_EQ(painter->updates.size(), 1U);
}

TEST(ViewOutsideAWindow, DrawsNothing)
{
    BView view(BRect(0, 0, 9, 9), "", 0, B_WILL_DRAW);
    view.FillRect(view.Bounds());
    view.DrawString("text", BPoint(0, 5));
    view.Invalidate();
    EXPECT_EQ(test::PixelOf(&view, 0, 0), 0U);
    EXPECT_FALSE(view.LockLooper());
    EXPECT_FALSE(view.IsFocus());
    view.MakeFocus();
    BPoint where;
    uint32 buttons = 7;
    view.GetMouse(&where, &buttons, false);
    EXPECT_EQ(buttons, 0U);
}
