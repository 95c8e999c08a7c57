// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/XSettings.h"

#include "kits/interface/platform/x11/DesktopScale.h"
#include "tests/kits/interface/platform/x11/WrittenSettings.h"

#include <gtest/gtest.h>

using kits::XSettings;
namespace DesktopScale = kits::DesktopScale;

namespace {

double ScaleOf(const WrittenSettings& written)
{
    return DesktopScale::Of(written.Read(), 1.25);
}

constexpr int32 kPlain = 96 * 1024;

} // namespace

TEST(XSettings, ReadsNumbersAndTextsOfEitherOrder)
{
    for (const bool highFirst : {false, true}) {
        const XSettings settings = WrittenSettings(highFirst)
                                       .Text("Net/ThemeName", "Adwaita-dark")
                                       .Color("Net/Background")
                                       .Integer("Xft/DPI", 98304)
                                       .Integer("Xft/Antialias", -1)
                                       .Text("Gtk/FontName", "")
                                       .Read();
        EXPECT_EQ(settings.Text("Net/ThemeName"), "Adwaita-dark");
        EXPECT_EQ(settings.Text("Gtk/FontName"), "");
        EXPECT_EQ(settings.Integer("Xft/DPI"), 98304);
        EXPECT_EQ(settings.Integer("Xft/Antialias"), -1);
        EXPECT_FALSE(settings.Integer("Net/ThemeName").has_value());
        EXPECT_FALSE(settings.Integer("Net/Background").has_value());
        EXPECT_FALSE(settings.Text("Xft/DPI").has_value());
        EXPECT_FALSE(settings.Text("").has_value());
    }
}

TEST(XSettings, WhatIsCutOffIsReadUpToThere)
{
    const std::vector<uint8> all = WrittenSettings().Integer("Xft/DPI", 98304).Text("Net/ThemeName", "Adwaita").Bytes();
    for (size_t size = 0; size < all.size(); size++) {
        const std::span<const uint8> part = std::span(all).first(size);
        const XSettings settings(part);
        EXPECT_FALSE(settings.Text("Net/ThemeName").has_value()) << size;
        EXPECT_EQ(settings.Integer("Xft/DPI").has_value(), size >= 12 + 16 + 4) << size;
    }
}

TEST(XSettings, AnUnknownTypeEndsThemAndHugeLengthsAreNone)
{
    const XSettings settings = WrittenSettings().Integer("A", 1).OfType(9, "B").Integer("C", 3).Read();
    EXPECT_EQ(settings.Integer("A"), 1);
    EXPECT_FALSE(settings.Integer("C").has_value());
    std::vector<uint8> bytes = WrittenSettings().Text("A", "text").Bytes();
    for (size_t place = 4; place < bytes.size(); place++) {
        std::vector<uint8> broken = bytes;
        broken[place] = 0xff;
        EXPECT_FALSE(XSettings(broken).Integer("A").has_value());
    }
}

TEST(DesktopScale, IsTheResolutionTimesTheFactor)
{
    EXPECT_EQ(ScaleOf(WrittenSettings()), 1.25);
    EXPECT_EQ(ScaleOf(WrittenSettings().Integer("Xft/DPI", kPlain)), 1);
    EXPECT_EQ(ScaleOf(WrittenSettings().Integer("Xft/DPI", kPlain * 3 / 2)), 1.5);
    EXPECT_EQ(ScaleOf(WrittenSettings().Integer("Gdk/WindowScalingFactor", 2)), 2.5);
    EXPECT_EQ(ScaleOf(WrittenSettings().Integer("Xft/DPI", kPlain).Integer("Gdk/WindowScalingFactor", 2)), 2);
    EXPECT_EQ(ScaleOf(WrittenSettings().Integer("Xft/DPI", kPlain * 3 / 2).Integer("Gdk/WindowScalingFactor", 2)), 3);
    EXPECT_EQ(DesktopScale::OfToolkit(WrittenSettings().Integer("Gdk/WindowScalingFactor", 2).Read(), 1.25), 1.25);
    EXPECT_EQ(DesktopScale::OfToolkit(WrittenSettings().Integer("Xft/DPI", kPlain * 2).Read(), 1.25), 2);
}

TEST(DesktopScale, HasTheFactorOnceWhereTheResolutionHasItToo)
{
    EXPECT_EQ(ScaleOf(WrittenSettings()
                          .Integer("Xft/DPI", 2 * kPlain)
                          .Integer("Gdk/UnscaledDPI", kPlain)
                          .Integer("Gdk/WindowScalingFactor", 2)),
              2);
}

TEST(DesktopScale, IsHeldToWhatCanBeShown)
{
    for (const int32 resolution : {0, -1, 1023, INT32_MIN})
        EXPECT_EQ(ScaleOf(WrittenSettings().Integer("Xft/DPI", resolution)), 1.25) << resolution;
    EXPECT_EQ(ScaleOf(WrittenSettings().Integer("Xft/DPI", 1024)), 1);
    for (const int32 factor : {0, -1, INT32_MIN})
        EXPECT_EQ(ScaleOf(WrittenSettings().Integer("Gdk/WindowScalingFactor", factor)), 1.25) << factor;
    EXPECT_EQ(ScaleOf(WrittenSettings().Integer("Xft/DPI", INT32_MAX).Integer("Gdk/WindowScalingFactor", INT32_MAX)),
              DesktopScale::kMost);
}
