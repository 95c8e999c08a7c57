#include "kits/interface/screens/XSettings.h"

#include "kits/interface/screens/DesktopScale.h"

#include <gtest/gtest.h>
#include <vector>

using kits::XSettings;
namespace DesktopScale = kits::DesktopScale;

namespace {

/// Settings as a daemon writes them.
class Written {
public:
    explicit Written(bool highFirst = false)
        : fHighFirst(highFirst)
    {
        fBytes = {static_cast<uint8>(highFirst ? 1 : 0), 0, 0, 0};
        Number(7, 4);
        Number(0, 4);
    }

    Written& Integer(const std::string& name, int32 value)
    {
        Begin(0, name);
        Number(static_cast<uint32>(value), 4);
        return *this;
    }
    Written& Text(const std::string& name, const std::string& value)
    {
        Begin(1, name);
        Number(static_cast<uint32>(value.size()), 4);
        Padded(value);
        return *this;
    }
    Written& Color(const std::string& name)
    {
        Begin(2, name);
        Number(1, 4);
        Number(2, 4);
        return *this;
    }
    Written& OfType(uint8 type, const std::string& name)
    {
        Begin(type, name);
        return *this;
    }

    const std::vector<uint8>& Bytes() const { return fBytes; }
    XSettings Read() const { return XSettings(fBytes); }

private:
    void Begin(uint8 type, const std::string& name)
    {
        fCount++;
        for (uint32 i = 0; i < 4; i++)
            fBytes[8 + i] = static_cast<uint8>(fCount >> (fHighFirst ? 24 - 8 * i : 8 * i));
        fBytes.insert(fBytes.end(), {type, 0});
        Number(static_cast<uint32>(name.size()), 2);
        Padded(name);
        Number(3, 4);
    }
    void Number(uint32 value, uint32 size)
    {
        for (uint32 i = 0; i < size; i++)
            fBytes.push_back(static_cast<uint8>(value >> 8 * (fHighFirst ? size - 1 - i : i)));
    }
    void Padded(const std::string& text)
    {
        fBytes.insert(fBytes.end(), text.begin(), text.end());
        while (fBytes.size() % 4 != 0)
            fBytes.push_back(0);
    }

    bool fHighFirst;
    uint32 fCount = 0;
    std::vector<uint8> fBytes;
};

double ScaleOf(const Written& written)
{
    return DesktopScale::Of(written.Read(), 1.25);
}

constexpr int32 kPlain = 96 * 1024;

} // namespace

TEST(XSettings, ReadsNumbersAndTextsOfEitherOrder)
{
    for (const bool highFirst : {false, true}) {
        const XSettings settings = Written(highFirst)
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
    const std::vector<uint8> all = Written().Integer("Xft/DPI", 98304).Text("Net/ThemeName", "Adwaita").Bytes();
    for (size_t size = 0; size < all.size(); size++) {
        const std::span<const uint8> part = std::span(all).first(size);
        const XSettings settings(part);
        EXPECT_FALSE(settings.Text("Net/ThemeName").has_value()) << size;
        EXPECT_EQ(settings.Integer("Xft/DPI").has_value(), size >= 12 + 16 + 4) << size;
    }
}

TEST(XSettings, AnUnknownTypeEndsThemAndHugeLengthsAreNone)
{
    const XSettings settings = Written().Integer("A", 1).OfType(9, "B").Integer("C", 3).Read();
    EXPECT_EQ(settings.Integer("A"), 1);
    EXPECT_FALSE(settings.Integer("C").has_value());
    std::vector<uint8> bytes = Written().Text("A", "text").Bytes();
    for (size_t place = 4; place < bytes.size(); place++) {
        std::vector<uint8> broken = bytes;
        broken[place] = 0xff;
        EXPECT_FALSE(XSettings(broken).Integer("A").has_value());
    }
}

TEST(DesktopScale, IsTheResolutionTimesTheFactor)
{
    EXPECT_EQ(ScaleOf(Written()), 1.25);
    EXPECT_EQ(ScaleOf(Written().Integer("Xft/DPI", kPlain)), 1);
    EXPECT_EQ(ScaleOf(Written().Integer("Xft/DPI", kPlain * 3 / 2)), 1.5);
    EXPECT_EQ(ScaleOf(Written().Integer("Gdk/WindowScalingFactor", 2)), 2.5);
    EXPECT_EQ(ScaleOf(Written().Integer("Xft/DPI", kPlain).Integer("Gdk/WindowScalingFactor", 2)), 2);
    EXPECT_EQ(ScaleOf(Written().Integer("Xft/DPI", kPlain * 3 / 2).Integer("Gdk/WindowScalingFactor", 2)), 3);
    EXPECT_EQ(DesktopScale::OfToolkit(Written().Integer("Gdk/WindowScalingFactor", 2).Read(), 1.25), 1.25);
    EXPECT_EQ(DesktopScale::OfToolkit(Written().Integer("Xft/DPI", kPlain * 2).Read(), 1.25), 2);
}

TEST(DesktopScale, HasTheFactorOnceWhereTheResolutionHasItToo)
{
    EXPECT_EQ(ScaleOf(Written()
                          .Integer("Xft/DPI", 2 * kPlain)
                          .Integer("Gdk/UnscaledDPI", kPlain)
                          .Integer("Gdk/WindowScalingFactor", 2)),
              2);
}

TEST(DesktopScale, IsHeldToWhatCanBeShown)
{
    for (const int32 resolution : {0, -1, 1023, INT32_MIN})
        EXPECT_EQ(ScaleOf(Written().Integer("Xft/DPI", resolution)), 1.25) << resolution;
    EXPECT_EQ(ScaleOf(Written().Integer("Xft/DPI", 1024)), 1);
    for (const int32 factor : {0, -1, INT32_MIN})
        EXPECT_EQ(ScaleOf(Written().Integer("Gdk/WindowScalingFactor", factor)), 1.25) << factor;
    EXPECT_EQ(ScaleOf(Written().Integer("Xft/DPI", INT32_MAX).Integer("Gdk/WindowScalingFactor", INT32_MAX)),
              DesktopScale::kMost);
}
