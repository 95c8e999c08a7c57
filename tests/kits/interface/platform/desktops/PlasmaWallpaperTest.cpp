// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/PlasmaWallpaper.h"

#include <gtest/gtest.h>

namespace kits::PlasmaWallpaper {
namespace {

std::string Best(const std::vector<std::string>& names, Size screen)
{
    const int best = BestOf(names, screen);
    return best < 0 ? "" : names[static_cast<size_t>(best)];
}

TEST(PlasmaWallpaperTest, ThePictureHasTheScreensShape)
{
    const std::vector<std::string> names{"1080x1920.png", "1280x1024.png", "1280x800.png",  "1920x1080.png",
                                         "2560x1600.png", "3840x2160.png", "screenshot.png"};
    EXPECT_EQ(Best(names, {1280, 800}), "1280x800.png");
    EXPECT_EQ(Best(names, {1440, 900}), "2560x1600.png");
    EXPECT_EQ(Best(names, {1366, 768}), "1920x1080.png");
    EXPECT_EQ(Best(names, {2560, 1440}), "3840x2160.png");
    EXPECT_EQ(Best(names, {7680, 4320}), "3840x2160.png");
    EXPECT_EQ(Best(names, {1080, 2400}), "1080x1920.png");
}

TEST(PlasmaWallpaperTest, WithoutAScreenItIsTheSmallest)
{
    EXPECT_EQ(Best({"1920x1080.png", "640x480.jpg", "800x600.jpg"}, {}), "640x480.jpg");
}

TEST(PlasmaWallpaperTest, NamesWithoutASizeComeLast)
{
    EXPECT_EQ(Best({"0x0.png", "any.png", "-5x7.png", "5120x2880.png"}, {800, 600}), "5120x2880.png");
    EXPECT_EQ(Best({"any.png", "other.png"}, {800, 600}), "any.png");
    EXPECT_EQ(Best({}, {800, 600}), "");
}

TEST(PlasmaWallpaperTest, WhatIsNotThereIsNoPicture)
{
    EXPECT_EQ(PictureOf("/nowhere/picture.png", {}, false), std::nullopt);
    EXPECT_EQ(PictureOf("file:///nowhere", {}, false), std::nullopt);
    EXPECT_EQ(PictureOf("No such package", {}, true), std::nullopt);
}

} // namespace
} // namespace kits::PlasmaWallpaper
