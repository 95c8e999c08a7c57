// SPDX-License-Identifier: MIT
#include "kits/interface/Bitmap.h"
#include "kits/interface/View.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/interface/core/WindowImpl.h"
#include "tests/support/GuiTest.h"

#include <QImage>
#include <QPixmap>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

/// Columns of its own colour, drawn through a bitmap or as lines.
class Striped : public BView {
public:
    Striped(BRect frame, bool byBitmap)
        : BView(frame, "", 0, B_WILL_DRAW)
        , fByBitmap(byBitmap)
    {
    }
    void Draw(BRect) override
    {
        BBitmap bitmap(Bounds(), B_RGB32);
        const int32 width = bitmap.BytesPerRow() / 4;
        for (int32 i = 0; i < bitmap.BitsLength() / 4; i++)
            static_cast<uint32*>(bitmap.Bits())[i] = ColorOf(i % width);
        if (fByBitmap) {
            DrawBitmap(&bitmap, Bounds(), Bounds());
            return;
        }
        for (int32 x = 0; x < width; x++) {
            SetHighColor(static_cast<uint8>(x * 10), 100, 50);
            StrokeLine(BPoint(static_cast<float>(x), 0), BPoint(static_cast<float>(x), Bounds().bottom));
        }
    }
    static uint32 ColorOf(int32 column) { return 0xFF006432 | static_cast<uint32>(column * 10) << 16; }

private:
    bool fByBitmap;
};

} // namespace

// Run with QT_SCALE_FACTOR set, see CMakeLists.txt.
TEST(ViewScaled, ColumnsAreSharpAndViewsMeet)
{
    auto* window = new BWindow(BRect(50, 50, 149, 99), "scaled", B_TITLED_WINDOW, 0);
    // Odd places, so that views begin between screen pixels.
    auto* left = new Striped(BRect(0, 0, 12, 9), true);
    auto* right = new Striped(BRect(13, 0, 24, 9), false);
    auto* below = new Striped(BRect(0, 10, 24, 20), true);
    for (BView* view : {left, right, below})
        window->AddChild(view);
    test::Show(window);
    const double scale = kits::WindowImpl::Of(window).Scale();
    if (scale == 1) {
        window->Quit();
        test::Turn();
        GTEST_SKIP() << "at a scale of 1 there is nothing to try";
    }
    const QImage image = kits::WindowWidget(window)->grab().toImage();
    EXPECT_EQ(image.devicePixelRatio(), scale);
    const auto edge = [scale](int32 place) { return static_cast<int32>(std::floor(place * scale + 0.5)); };
    for (int32 x = 0; x < 25; x++) {
        for (int32 device = edge(x); device < edge(x + 1); device++) {
            const int32 column = x < 13 ? x : x - 13;
            EXPECT_EQ(image.pixel(device, 0), Striped::ColorOf(column)) << device;
            EXPECT_EQ(image.pixel(device, edge(10) - 1), Striped::ColorOf(column)) << device;
            EXPECT_EQ(image.pixel(device, edge(10)), Striped::ColorOf(x)) << device;
            EXPECT_EQ(image.pixel(device, edge(21) - 1), Striped::ColorOf(x)) << device;
        }
    }
    window->Quit();
    test::Turn();
}

TEST(ViewScaled, TextIsRasteredAtTheScale)
{
    auto* window = new BWindow(BRect(50, 50, 249, 99), "scaled", B_TITLED_WINDOW, 0);
    auto* view = new BView(BRect(0, 0, 199, 49), "", 0, B_WILL_DRAW);
    window->AddChild(view);
    test::Show(window);
    view->SetHighColor(0, 0, 0);
    BFont font;
    font.SetSize(20);
    view->SetFont(&font);
    view->DrawString("H", BPoint(10, 40));
    const double scale = kits::WindowImpl::Of(window).Scale();
    const kits::Surface& surface = kits::ViewImpl::Of(view).fSurface;
    int32 top = surface.DeviceHeight();
    int32 bottom = 0;
    for (int32 y = 0; y < surface.DeviceHeight(); y++) {
        for (int32 x = 0; x < surface.DeviceWidth(); x++) {
            if (test::PixelOf(view, x, y) == 0xFF000000) {
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
    }
    // It stands on the base line, and a capital is about 0.7 of the size.
    EXPECT_NEAR(bottom + 1, 40 * scale, 1.01);
    EXPECT_NEAR(bottom + 1 - top, 0.72 * 20 * scale, 0.08 * 20 * scale);
    window->Quit();
    test::Turn();
}
