// SPDX-License-Identifier: MIT
#include "kits/interface/drawing/Surface.h"

#include "kits/interface/drawing/DirtyRects.h"

#include <gtest/gtest.h>

using kits::Canvas;
using kits::PixelGrid;
using kits::PixelRect;
using kits::Surface;

namespace {

constexpr uint32 kGround = 0xFF202020;

void Fill(Surface& surface, const PixelRect& rect, uint32 word)
{
    Canvas canvas = surface.MakeCanvas();
    canvas.FillRect(rect, word);
    surface.Take(canvas);
}

uint32 At(const Surface& surface, int32 x, int32 y)
{
    return surface.Words()[y * surface.DeviceWidth() + x];
}

} // namespace

TEST(Surface, KeepsItsPictureWhenItsSizeChanges)
{
    Surface surface;
    ASSERT_TRUE(surface.SetSize(4, 3, PixelGrid(), kGround));
    EXPECT_TRUE(surface.IsOpaque());
    Fill(surface, {1, 1, 2, 2}, 0x00123456);

    for (const auto& [width, height] : {std::pair(6, 5), std::pair(6, 2), std::pair(3, 2), std::pair(3, 9)}) {
        ASSERT_TRUE(surface.SetSize(width, height, PixelGrid(), kGround));
        EXPECT_EQ(surface.DeviceWidth(), width);
        EXPECT_EQ(surface.DeviceHeight(), height);
        EXPECT_EQ(At(surface, 1, 1), 0xFF123456);
        EXPECT_EQ(At(surface, width - 1, height - 1), kGround);
        EXPECT_TRUE(surface.IsOpaque());
    }
}

TEST(Surface, IsOpaqueOnlyAfterEverythingWasCovered)
{
    Surface surface;
    ASSERT_TRUE(surface.SetSize(4, 3, PixelGrid(), 0));
    EXPECT_FALSE(surface.IsOpaque());
    Fill(surface, {0, 0, 4, 2}, kGround);
    EXPECT_FALSE(surface.IsOpaque());
    Fill(surface, {0, 0, 4, 3}, kGround);
    EXPECT_TRUE(surface.IsOpaque());
    Fill(surface, {0, 0, 1, 1}, B_TRANSPARENT_MAGIC_RGBA32);
    EXPECT_FALSE(surface.IsOpaque());
    Fill(surface, {0, 0, 4, 3}, kGround);
    ASSERT_TRUE(surface.SetSize(4, 4, PixelGrid(), 0));
    EXPECT_FALSE(surface.IsOpaque());
    Fill(surface, {0, 0, 4, 4}, kGround);
    ASSERT_TRUE(surface.SetSize(2, 2, PixelGrid(), 0));
    EXPECT_TRUE(surface.IsOpaque());
}

TEST(Surface, HasTheResolutionOfTheScreen)
{
    Surface surface;
    ASSERT_TRUE(surface.SetSize(5, 3, PixelGrid(1.5, 0, 0), kGround));
    EXPECT_EQ(surface.DeviceWidth(), 8);
    EXPECT_EQ(surface.DeviceHeight(), 5);
    ASSERT_TRUE(surface.SetSize(5, 3, PixelGrid(1.5, 1, 0), kGround));
    // From 1.5 to 9, both rounded.
    EXPECT_EQ(surface.DeviceWidth(), 7);
    ASSERT_TRUE(surface.SetSize(5, 3, PixelGrid(2, 1, 0), kGround));
    EXPECT_EQ(surface.DeviceWidth(), 10);
}

TEST(Surface, NothingIsNoSurface)
{
    Surface surface;
    EXPECT_FALSE(surface.SetSize(0, 5, PixelGrid(), kGround));
    EXPECT_FALSE(surface.Exists());
    EXPECT_TRUE(surface.SetSize(1, 1, PixelGrid(), kGround));
    EXPECT_FALSE(surface.SetSize(3, -1, PixelGrid(), kGround));
    EXPECT_FALSE(surface.Exists());
}

TEST(DirtyRects, AColumnAndACaptionStayTwo)
{
    kits::DirtyRects dirty;
    dirty.Add({200, 0, 201, 50});
    dirty.Add({10, 5, 60, 20});
    EXPECT_EQ(dirty.end() - dirty.begin(), 2);
    // The next column joins the first.
    dirty.Add({201, 0, 202, 50});
    EXPECT_EQ(dirty.end() - dirty.begin(), 2);
    dirty.Add({0, 0, 300, 50});
    ASSERT_EQ(dirty.end() - dirty.begin(), 1);
    EXPECT_EQ(*dirty.begin(), (PixelRect{0, 0, 300, 50}));
    dirty.Add({5, 5, 5, 9});
    EXPECT_EQ(dirty.end() - dirty.begin(), 1);
}

TEST(DirtyRects, ManyBecomeOne)
{
    kits::DirtyRects dirty;
    for (int32 i = 0; i < 100; i++)
        dirty.Add({i * 10, i * 10, i * 10 + 1, i * 10 + 1});
    EXPECT_LE(dirty.end() - dirty.begin(), kits::DirtyRects::kMax);
    // Nothing is lost.
    for (int32 i = 0; i < 100; i++) {
        bool held = false;
        for (const PixelRect& rect : dirty)
            held = held || (rect.left <= i * 10 && rect.top <= i * 10 && rect.right > i * 10 && rect.bottom > i * 10);
        EXPECT_TRUE(held) << i;
    }
}
