// SPDX-License-Identifier: MIT
#include "kits/interface/Bitmap.h"

#include "kits/interface/View.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

uint32 WordAt(const BBitmap& bitmap, int32 x, int32 y)
{
    return static_cast<const uint32*>(bitmap.Bits())[y * bitmap.BytesPerRow() / 4 + x];
}

/// A bitmap with one view that covers it.
struct Drawing {
    explicit Drawing(BRect bounds)
        : bitmap(bounds, B_RGB32, true)
        , view(new BView(bounds, "", 0, B_WILL_DRAW))
    {
        bitmap.AddChild(view);
        bitmap.Lock();
    }
    ~Drawing() { bitmap.Unlock(); }

    BBitmap bitmap;
    BView* view;
};

} // namespace

TEST(Bitmap, HasOneWordForEveryPixelOfItsBounds)
{
    BBitmap bitmap(BRect(0, 0, 100, 30), B_RGB32);
    ASSERT_EQ(bitmap.InitCheck(), B_OK);
    EXPECT_EQ(bitmap.BytesPerRow(), 101 * 4);
    EXPECT_EQ(bitmap.BitsLength(), 101 * 31 * 4);
    EXPECT_EQ(bitmap.Bounds(), BRect(0, 0, 100, 30));
    EXPECT_EQ(WordAt(bitmap, 100, 30), 0xFFFFFFFF);
}

TEST(Bitmap, RefusesWhatCannotBe)
{
    const BRect bad[] = {BRect(0, 0, -1, 5),       BRect(0, 0, NAN, 5),       BRect(-INFINITY, 0, 5, 5),
                         BRect(0, 0, 32767, 5),    BRect(0, 0, 1e30F, 1e30F), BRect(1e9F, 0, 1e9F, 0),
                         BRect(0, 0, 32766, 32766)};
    for (const BRect& bounds : bad) {
        BBitmap bitmap(bounds, B_RGB32, true);
        EXPECT_FALSE(bitmap.IsValid());
        EXPECT_EQ(bitmap.Bits(), nullptr);
        EXPECT_EQ(bitmap.BitsLength(), 0);
    }
    EXPECT_EQ(BBitmap(BRect(0, 0, 1, 1), B_NO_COLOR_SPACE).InitCheck(), B_BAD_VALUE);
}

TEST(Bitmap, StrokesAndFillsStoreTheWordOfTheColour)
{
    Drawing drawing(BRect(0, 0, 9, 9));
    drawing.view->SetLowColor(B_TRANSPARENT_COLOR);
    drawing.view->FillRect(drawing.view->Bounds(), B_SOLID_LOW);
    EXPECT_EQ(WordAt(drawing.bitmap, 0, 0), B_TRANSPARENT_MAGIC_RGBA32);
    EXPECT_EQ(WordAt(drawing.bitmap, 9, 9), B_TRANSPARENT_MAGIC_RGBA32);
    drawing.view->SetHighColor(100, 100, 220, 0);
    drawing.view->StrokeLine(BPoint(3, 9), BPoint(3, 4));
    EXPECT_EQ(WordAt(drawing.bitmap, 3, 3), B_TRANSPARENT_MAGIC_RGBA32);
    EXPECT_EQ(WordAt(drawing.bitmap, 3, 4), 0x006464DCU);
    EXPECT_EQ(WordAt(drawing.bitmap, 3, 9), 0x006464DCU);
    EXPECT_EQ(WordAt(drawing.bitmap, 4, 9), B_TRANSPARENT_MAGIC_RGBA32);
    drawing.view->SetHighColor(1, 2, 3, 255);
    drawing.view->FillRect(BRect(5.4F, 5, 6.4F, 5));
    EXPECT_EQ(WordAt(drawing.bitmap, 5, 5), 0xFF010203);
    EXPECT_EQ(WordAt(drawing.bitmap, 6, 5), 0xFF010203);
    EXPECT_EQ(WordAt(drawing.bitmap, 7, 5), B_TRANSPARENT_MAGIC_RGBA32);
    // The first column's sentinel is column 0.
    drawing.view->StrokeLine(BPoint(1e-7F, 0), BPoint(1e-7F, 0));
    EXPECT_EQ(WordAt(drawing.bitmap, 0, 0), 0xFF010203);
    drawing.view->FillRect(BRect(4, 4, 3, 9));
    EXPECT_EQ(WordAt(drawing.bitmap, 4, 4), B_TRANSPARENT_MAGIC_RGBA32);
}

TEST(Bitmap, AViewDrawsInItsFrameOnly)
{
    BBitmap bitmap(BRect(0, 0, 9, 9), B_RGB32, true);
    auto* view = new BView(BRect(2, 3, 5, 6), "", 0, B_WILL_DRAW);
    bitmap.AddChild(view);
    bitmap.Lock();
    view->SetHighColor(1, 1, 1);
    view->FillRect(BRect(-100, -100, 100, 100));
    for (int32 y = 0; y < 10; y++) {
        for (int32 x = 0; x < 10; x++) {
            const bool inside = x >= 2 && x <= 5 && y >= 3 && y <= 6;
            EXPECT_EQ(WordAt(bitmap, x, y), inside ? 0xFF010101 : 0xFFFFFFFF);
        }
    }
    view->SetHighColor(2, 2, 2);
    view->StrokeLine(BPoint(0, 0), BPoint(1, 0));
    EXPECT_EQ(WordAt(bitmap, 2, 3), 0xFF020202);
    EXPECT_EQ(WordAt(bitmap, 3, 3), 0xFF020202);
    bitmap.Unlock();
}

TEST(Bitmap, ChangesHandsWithItsView)
{
    BBitmap old(BRect(0, 0, 3, 0), B_RGB32, true);
    auto* view = new BView(BRect(0, 0, 3, 0), "", 0, B_WILL_DRAW);
    old.AddChild(view);
    old.Lock();
    view->SetHighColor(9, 0, 0);
    view->FillRect(BRect(1, 0, 1, 0));

    BBitmap fresh(BRect(0, 0, 7, 1), B_RGB32, true);
    fresh.Lock();
    ASSERT_TRUE(old.RemoveChild(view));
    EXPECT_FALSE(old.RemoveChild(view));
    fresh.AddChild(view);
    view->ResizeTo(7, 1);
    view->DrawBitmap(&old, BRect(0, 0, 3, 0), BRect(0, 0, 7, 1));
    for (int32 x = 0; x < 8; x++)
        EXPECT_EQ(WordAt(fresh, x, 1), x == 2 || x == 3 ? 0xFF090000 : 0xFFFFFFFF);
    fresh.Unlock();
    old.Unlock();
}

TEST(Bitmap, TakesNoViewsUnlessItWasMadeForThem)
{
    BBitmap bitmap(BRect(0, 0, 3, 3), B_RGB32);
    BView view(BRect(0, 0, 3, 3), "", 0, 0);
    bitmap.AddChild(&view);
    EXPECT_FALSE(bitmap.RemoveChild(&view));
    bitmap.AddChild(nullptr);
    EXPECT_FALSE(bitmap.RemoveChild(nullptr));
}

TEST(Bitmap, LeavesAViewThatWasDeletedAlone)
{
    BBitmap bitmap(BRect(0, 0, 3, 3), B_RGB32, true);
    auto* view = new BView(BRect(0, 0, 3, 3), "", 0, 0);
    bitmap.AddChild(view);
    delete view;
    EXPECT_FALSE(bitmap.RemoveChild(view));
}

TEST(Bitmap, TextIsBlendedFromLowToHigh)
{
    Drawing drawing(BRect(0, 0, 99, 29));
    drawing.view->SetHighColor(255, 255, 255);
    drawing.view->FillRect(drawing.view->Bounds());
    BFont font;
    font.SetSize(15);
    drawing.view->SetFont(&font);
    drawing.view->SetHighColor(200, 0, 0);
    drawing.view->SetLowColor(make_color(0, 0, 200));
    font_height height;
    font.GetHeight(&height);
    const float width = font.StringWidth("Hm");
    drawing.view->DrawString("Hm", BPoint(20, 20));

    int32 full = 0;
    int32 between = 0;
    for (int32 y = 0; y < 30; y++) {
        for (int32 x = 0; x < 100; x++) {
            const uint32 word = WordAt(drawing.bitmap, x, y);
            if (word == 0xFFFFFFFF)
                continue;
            // Only colours between low and high, only in the text's box.
            const uint32 red = word >> 16 & 0xFF;
            const uint32 blue = word & 0xFF;
            EXPECT_EQ(word >> 24, 255U);
            EXPECT_EQ(word >> 8 & 0xFF, 0U);
            EXPECT_NEAR(static_cast<double>(red + blue), 200, 1);
            EXPECT_TRUE(x >= 20 && static_cast<float>(x) <= 20 + width);
            EXPECT_TRUE(static_cast<float>(y) >= 20 - height.ascent && static_cast<float>(y) <= 20 + height.descent);
            full += red == 200;
            between += red > 0 && red < 200;
        }
    }
    EXPECT_GT(full, 10);
    EXPECT_GT(between, 10);
}

TEST(Bitmap, TextWithoutAntialiasingIsAllOrNothing)
{
    Drawing drawing(BRect(0, 0, 99, 29));
    BFont font;
    font.SetSize(15);
    font.SetFlags(B_DISABLE_ANTIALIASING);
    drawing.view->SetFont(&font);
    drawing.view->SetHighColor(200, 0, 0);
    drawing.view->SetLowColor(make_color(0, 0, 200));
    drawing.view->DrawString("Qel 12.5 %", BPoint(2, 20));
    int32 full = 0;
    for (int32 y = 0; y < 30; y++) {
        for (int32 x = 0; x < 100; x++) {
            const uint32 word = WordAt(drawing.bitmap, x, y);
            EXPECT_TRUE(word == 0xFFFFFFFF || word == 0xFFC80000) << std::hex << word;
            full += word == 0xFFC80000;
        }
    }
    EXPECT_GT(full, 50);
}

TEST(Bitmap, RestoringTheBoxOfATextErasesIt)
{
    for (const char* text : {"j", "Jf", "gÅ|", "100.0 %", "\xE4\xBD\xA0", "W"}) {
        for (const float size : {9.0F, 15.0F, 33.5F}) {
            Drawing drawing(BRect(0, 0, 299, 99));
            BFont font;
            font.SetSize(size);
            drawing.view->SetFont(&font);
            drawing.view->SetHighColor(0, 0, 0);
            const BPoint where(40.25F, 60.75F);
            drawing.view->DrawString(text, where);
            font_height height;
            font.GetHeight(&height);
            drawing.view->SetHighColor(255, 255, 255);
            drawing.view->FillRect(BRect(where.x, where.y - height.ascent, where.x + drawing.view->StringWidth(text),
                                         where.y + height.descent));
            for (int32 y = 0; y < 100; y++)
                for (int32 x = 0; x < 300; x++)
                    ASSERT_EQ(WordAt(drawing.bitmap, x, y), 0xFFFFFFFF) << text << " " << size << " " << x << "," << y;
        }
    }
}

TEST(Bitmap, TurnedTextGoesUp)
{
    Drawing drawing(BRect(0, 0, 99, 99));
    BFont font;
    font.SetSize(15);
    font.SetRotation(90);
    drawing.view->SetFont(&font);
    drawing.view->SetHighColor(0, 0, 0);
    drawing.view->DrawString("mmmm", BPoint(50, 90));
    int32 above = 0;
    for (int32 y = 0; y < 100; y++) {
        for (int32 x = 0; x < 100; x++) {
            const bool inked = WordAt(drawing.bitmap, x, y) != 0xFFFFFFFF;
            EXPECT_FALSE(inked && x > 56);
            above += inked && y < 60;
        }
    }
    EXPECT_GT(above, 5);
}
