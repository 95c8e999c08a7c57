// SPDX-License-Identifier: MIT
#include "kits/interface/drawing/Canvas.h"

#include "kits/interface/drawing/TextBlend.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using kits::Canvas;
using kits::PixelGrid;
using kits::PixelRect;

namespace {

constexpr uint32 kInk = 0xFF102030;

/// Pixels to draw into, shown as rows of '.' (0), '#' (the ink) and '?' (anything else).
struct Sheet {
    Sheet(int32 columns, int32 rows, Canvas::Kind kind = Canvas::kRaw, PixelGrid grid = PixelGrid())
        : width(columns)
        , height(rows)
        , words(static_cast<size_t>(columns) * static_cast<size_t>(rows), 0)
        , canvas(words.data(), columns, {0, 0, columns, rows}, kind, grid)
    {
    }

    std::string Row(int32 y) const
    {
        std::string row;
        for (int32 x = 0; x < width; x++) {
            const uint32 word = At(x, y);
            row += word == 0 ? '.' : word == kInk ? '#' : '?';
        }
        return row;
    }
    std::string Picture() const
    {
        std::string picture;
        for (int32 y = 0; y < height; y++)
            picture += Row(y) + "\n";
        return picture;
    }
    uint32 At(int32 x, int32 y) const { return words[static_cast<size_t>(y * width + x)]; }

    int32 width;
    int32 height;
    std::vector<uint32> words;
    Canvas canvas;
};

/// A bitmap whose pixels all differ: 1000 * row + column + 1.
std::vector<uint32> Numbered(int32 width, int32 height)
{
    std::vector<uint32> words;
    for (int32 y = 0; y < height; y++)
        for (int32 x = 0; x < width; x++)
            words.push_back(static_cast<uint32>(1000 * y + x + 1));
    return words;
}

/// Returns one channel between low (coverage 0) and high (coverage 255), rounded to the nearest integer.
uint32 BlendChannel(uint32 low, uint32 high, uint32 coverage)
{
    return (low * (255 - coverage) + high * coverage + 127) / 255;
}

} // namespace

TEST(Canvas, LinesIncludeBothEnds)
{
    Sheet sheet(6, 4);
    sheet.canvas.StrokeLine(1, 1, 4, 1, kInk);
    sheet.canvas.StrokeLine(0, 3, 0, 2, kInk);
    sheet.canvas.StrokeLine(5, 3, 5, 3, kInk);
    EXPECT_EQ(sheet.Picture(), "......\n"
                               ".####.\n"
                               "#.....\n"
                               "#....#\n");
    EXPECT_EQ(sheet.canvas.Changed(), (PixelRect{0, 1, 6, 4}));
}

TEST(Canvas, SlantedLinesAreTheSameInBothDirections)
{
    const int32 ends[][4] = {{0, 0, 9, 3}, {0, 9, 4, 0}, {1, 2, 8, 9}, {0, 5, 9, 4}, {3, 0, 2, 9}, {9, 9, 0, 0}};
    for (const auto& end : ends) {
        Sheet forth(10, 10);
        Sheet back(10, 10);
        forth.canvas.StrokeLine(end[0], end[1], end[2], end[3], kInk);
        back.canvas.StrokeLine(end[2], end[3], end[0], end[1], kInk);
        EXPECT_EQ(forth.Picture(), back.Picture());
        EXPECT_EQ(forth.At(end[0], end[1]), kInk);
        EXPECT_EQ(forth.At(end[2], end[3]), kInk);
    }
    Sheet sheet(8, 4);
    sheet.canvas.StrokeLine(0, 0, 7, 3, kInk);
    EXPECT_EQ(sheet.Picture(), "##......\n"
                               "..##....\n"
                               "....##..\n"
                               "......##\n");
}

TEST(Canvas, LinesFromFarAwayAreCutAndNotBent)
{
    Sheet whole(40, 20);
    whole.canvas.StrokeLine(0, 0, 39, 19, kInk);
    Sheet cut(40, 20);
    cut.canvas.SetClip({10, 0, 20, 20});
    cut.canvas.StrokeLine(0, 0, 39, 19, kInk);
    for (int32 y = 0; y < 20; y++) {
        const std::string row = cut.Row(y);
        EXPECT_EQ(row.substr(10, 10), whole.Row(y).substr(10, 10));
        EXPECT_EQ(row.substr(0, 10) + row.substr(20), std::string(30, '.'));
    }
    // Extreme coordinates cause neither an overflow nor an endless loop.
    Sheet far(10, 10);
    far.canvas.StrokeLine(-(1 << 28), -(1 << 28), 1 << 28, 1 << 28, kInk);
    for (int32 i = 0; i < 10; i++)
        EXPECT_EQ(far.At(i, i), kInk);
}

TEST(Canvas, FillsAreHeldToTheWords)
{
    Sheet sheet(5, 3);
    sheet.canvas.FillRect({3, -5, 100, 2}, kInk);
    sheet.canvas.FillRect({4, 0, 4, 3}, 0x1);
    sheet.canvas.FillRect({-10, 0, -5, 3}, 0x1);
    EXPECT_EQ(sheet.Picture(), "...##\n"
                               "...##\n"
                               ".....\n");
}

TEST(Canvas, ABitmapKeepsWordsAndAShownPictureIsOpaque)
{
    Sheet raw(3, 1);
    raw.canvas.FillRect({0, 0, 1, 1}, 0x00646464);
    raw.canvas.FillRect({1, 0, 2, 1}, B_TRANSPARENT_MAGIC_RGBA32);
    EXPECT_EQ(raw.At(0, 0), 0x00646464U);
    EXPECT_EQ(raw.At(1, 0), 0x00777477U);

    Sheet shown(3, 1, Canvas::kShown);
    shown.canvas.FillRect({0, 0, 3, 1}, 0x00646464);
    EXPECT_TRUE(shown.canvas.MadeOpaque());
    EXPECT_EQ(shown.At(0, 0), 0xFF646464);
    shown.canvas.FillRect({1, 0, 2, 1}, B_TRANSPARENT_MAGIC_RGBA32);
    EXPECT_EQ(shown.At(1, 0), 0U);
    EXPECT_TRUE(shown.canvas.WroteTransparent());
    EXPECT_FALSE(shown.canvas.MadeOpaque());
    // The same colour with another alpha is a colour like any other.
    shown.canvas.FillRect({1, 0, 2, 1}, 0xFF777477);
    EXPECT_EQ(shown.At(1, 0), 0xFF777477);
}

TEST(Canvas, PixelsAreCopiedOneToOne)
{
    const std::vector<uint32> words = Numbered(4, 3);
    Sheet sheet(6, 5);
    sheet.canvas.DrawPixels(words.data(), 4, 4, 3, {1, 1, 4, 3}, {2, 2, 5, 4}, false);
    EXPECT_EQ(sheet.At(2, 2), 1002U);
    EXPECT_EQ(sheet.At(4, 2), 1004U);
    EXPECT_EQ(sheet.At(4, 3), 2004U);
    EXPECT_EQ(sheet.At(5, 3), 0U);
    EXPECT_EQ(sheet.At(2, 4), 0U);
    EXPECT_EQ(sheet.canvas.Changed(), (PixelRect{2, 2, 5, 4}));
}

TEST(Canvas, PixelsOutsideOfTheSourceAreLeftOut)
{
    const std::vector<uint32> words = Numbered(2, 2);
    Sheet sheet(4, 4);
    sheet.canvas.DrawPixels(words.data(), 2, 2, 2, {-1, -1, 3, 3}, {0, 0, 4, 4}, false);
    EXPECT_EQ(sheet.At(0, 0), 0U);
    EXPECT_EQ(sheet.At(1, 1), 1U);
    EXPECT_EQ(sheet.At(2, 2), 1002U);
    EXPECT_EQ(sheet.At(3, 3), 0U);
}

TEST(Canvas, StretchingRepeatsAndShrinkingLeavesOutPixels)
{
    const std::vector<uint32> words = Numbered(2, 1);
    Sheet wide(6, 1);
    wide.canvas.DrawPixels(words.data(), 2, 2, 1, {0, 0, 2, 1}, {0, 0, 6, 1}, false);
    EXPECT_EQ(wide.words, (std::vector<uint32>{1, 1, 1, 2, 2, 2}));

    const std::vector<uint32> six = Numbered(6, 1);
    Sheet narrow(3, 1);
    narrow.canvas.DrawPixels(six.data(), 6, 6, 1, {0, 0, 6, 1}, {0, 0, 3, 1}, false);
    for (int32 x = 0; x < 3; x++) {
        // No new colours: each pixel is one of the two that map to it.
        EXPECT_GE(narrow.At(x, 0), static_cast<uint32>(2 * x + 1));
        EXPECT_LE(narrow.At(x, 0), static_cast<uint32>(2 * x + 2));
    }
}

TEST(Canvas, APictureCanBeDrawnOntoItself)
{
    for (const int32 shift : {-2, 2}) {
        for (const int32 rise : {-1, 0, 1}) {
            Sheet sheet(6, 4);
            sheet.words = Numbered(6, 4);
            sheet.canvas = Canvas(sheet.words.data(), 6, {0, 0, 6, 4}, Canvas::kRaw, PixelGrid());
            sheet.canvas.DrawPixels(sheet.words.data(), 6, 6, 4, {0, 0, 6, 4}, {shift, rise, 6 + shift, 4 + rise},
                                    false);
            const std::vector<uint32> before = Numbered(6, 4);
            for (int32 y = 0; y < 4; y++) {
                for (int32 x = 0; x < 6; x++) {
                    const bool covered = x - shift >= 0 && x - shift < 6 && y - rise >= 0 && y - rise < 4;
                    const int32 place = covered ? (y - rise) * 6 + x - shift : y * 6 + x;
                    EXPECT_EQ(sheet.At(x, y), before[static_cast<size_t>(place)]) << shift << " " << rise;
                }
            }
        }
    }
}

TEST(Canvas, TransparentPixelsOfABitmapShowWhatLiesBelow)
{
    const std::vector<uint32> words = {0x00010203, B_TRANSPARENT_MAGIC_RGBA32};
    Sheet copied(2, 1, Canvas::kShown);
    copied.words = {7, 7};
    copied.canvas = Canvas(copied.words.data(), 2, {0, 0, 2, 1}, Canvas::kShown, PixelGrid());
    copied.canvas.DrawPixels(words.data(), 2, 2, 1, {0, 0, 2, 1}, {0, 0, 2, 1}, false);
    EXPECT_EQ(copied.At(0, 0), 0xFF010203);
    EXPECT_EQ(copied.At(1, 0), 0U);

    copied.words = {7, 7};
    copied.canvas.DrawPixels(words.data(), 2, 2, 1, {0, 0, 2, 1}, {0, 0, 2, 1}, true);
    EXPECT_EQ(copied.At(0, 0), 0xFF010203);
    EXPECT_EQ(copied.At(1, 0), 7U);
}

TEST(Canvas, CoverageBlendsFromLowToHighAndLeavesTheRest)
{
    kits::CoverageMask mask{0, 0, 3, 1, {0, 255, 51}};
    Sheet sheet(3, 1, Canvas::kShown);
    sheet.words = {9, 9, 9};
    sheet.canvas = Canvas(sheet.words.data(), 3, {0, 0, 3, 1}, Canvas::kShown, PixelGrid());
    sheet.canvas.DrawCoverage(mask, 0, 0, {0, 0, 3, 1}, 0x00000000, 0x00FF00FF, false);
    EXPECT_EQ(sheet.At(0, 0), 9U);
    EXPECT_EQ(sheet.At(1, 0), 0xFFFF00FF);
    EXPECT_EQ(sheet.At(2, 0), 0xFF330033);

    // Over: starts from the present contents instead.
    sheet.words = {9, 9, 0xFF0A0A0A};
    sheet.canvas.DrawCoverage(mask, 0, 0, {0, 0, 3, 1}, 0x00FFFFFF, 0x000A0A0A, true);
    EXPECT_EQ(sheet.At(2, 0), 0xFF0A0A0A);
}

TEST(Canvas, CoverageIsCutByItsBox)
{
    kits::CoverageMask mask{-1, -1, 3, 3, std::vector<uint8>(9, 255)};
    Sheet sheet(6, 6);
    sheet.canvas.DrawCoverage(mask, 3, 3, {3, 2, 6, 6}, 0, kInk, false);
    EXPECT_EQ(sheet.Picture(), "......\n"
                               "......\n"
                               "...##.\n"
                               "...##.\n"
                               "...##.\n"
                               "......\n");
}

TEST(Canvas, CoverageOfEveryWidthIsBlendedPixelByPixel)
{
    std::mt19937 random(7);
    for (int32 width = 1; width <= 40; width++) {
        kits::CoverageMask mask{0, 0, width, 3, std::vector<uint8>(static_cast<size_t>(width) * 3)};
        // Texts have long runs of zero coverage.
        for (uint8& coverage : mask.coverage)
            coverage = random() % 12 == 0 ? static_cast<uint8>(random()) : 0;
        const auto from = static_cast<int32>(random() % static_cast<uint32>(width));
        Sheet sheet(width, 3);
        sheet.canvas.DrawCoverage(mask, 0, 0, {from, 0, width, 3}, 0x01020304, kInk, false);
        for (int32 y = 0; y < 3; y++) {
            for (int32 x = 0; x < width; x++) {
                const uint8 coverage = mask.coverage[static_cast<size_t>(y * width + x)];
                EXPECT_EQ(sheet.At(x, y), x < from || coverage == 0 ? 0 : kits::BlendWords(0x01020304, kInk, coverage));
            }
        }
    }
}

TEST(TextBlend, CoverageZeroOneAndBetween)
{
    const rgb_color low = make_color(10, 200, 0, 0);
    const rgb_color high = make_color(210, 100, 255, 255);
    EXPECT_EQ(kits::BlendWords(kits::ToWord(low), kits::ToWord(high), 0), kits::ToWord(low));
    EXPECT_EQ(kits::BlendWords(kits::ToWord(low), kits::ToWord(high), 255), kits::ToWord(high));
    // 51 of 255 is a fifth of the way.
    EXPECT_EQ(kits::BlendWords(kits::ToWord(low), kits::ToWord(high), 51), kits::ToWord(make_color(50, 180, 51, 51)));
    for (uint32 coverage = 0; coverage < 256; coverage++) {
        EXPECT_EQ(kits::BlendWords(77, 77, coverage), 77U);
        EXPECT_EQ(kits::BlendWords(0, 255, coverage), coverage);
        EXPECT_EQ(kits::BlendWords(255, 0, coverage), 255 - coverage);
    }
}

TEST(TextBlend, ChannelsDoNotTouchEachOther)
{
    for (uint32 low = 0; low < 256; low++) {
        for (uint32 high = 0; high < 256; high++) {
            for (uint32 coverage = 0; coverage < 256; coverage++) {
                const uint32 other = 255 - low;
                const uint32 there = 255 - high;
                const uint32 expected =
                    BlendChannel(low, high, coverage) * 0x01000100 + BlendChannel(other, there, coverage) * 0x00010001;
                ASSERT_EQ(kits::BlendWords(low * 0x01000100 + other * 0x00010001,
                                           high * 0x01000100 + there * 0x00010001, coverage),
                          expected);
            }
        }
    }
}

TEST(PixelGrid, EdgesOfViewsThatTouchMeet)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0}) {
        for (int32 origin = 0; origin < 12; origin++) {
            const PixelGrid first(scale, 0, 0);
            const PixelGrid second(scale, origin, 0);
            // The second begins where the first, `origin` pixels wide, ends.
            const auto begin = static_cast<int32>(std::floor(origin * scale + 0.5));
            EXPECT_EQ(first.EdgeX(origin), begin);
            for (int32 x = 0; x < 20; x++) {
                EXPECT_EQ(begin + second.EdgeX(x), first.EdgeX(origin + x)) << scale;
                const int32 width = second.EdgeX(x + 1) - second.EdgeX(x);
                EXPECT_GE(width, static_cast<int32>(std::floor(scale)));
                EXPECT_LE(width, static_cast<int32>(std::ceil(scale)));
            }
        }
    }
}

TEST(PixelGrid, OnlyThePhaseOfAnOriginMatters)
{
    EXPECT_TRUE(PixelGrid(1, 3, 5).SameEdges(PixelGrid(1, 4, 9)));
    EXPECT_TRUE(PixelGrid(2, 3, 5).SameEdges(PixelGrid(2, 4, 9)));
    EXPECT_TRUE(PixelGrid(1.5, 2, 5).SameEdges(PixelGrid(1.5, 4, 9)));
    EXPECT_FALSE(PixelGrid(1.5, 2, 5).SameEdges(PixelGrid(1.5, 3, 5)));
    EXPECT_FALSE(PixelGrid(1, 0, 0).SameEdges(PixelGrid(2, 0, 0)));
}

TEST(PixelGrid, CoordinatesNameTheNearestPixel)
{
    EXPECT_EQ(kits::ToPixel(1e-7F), 0);
    EXPECT_EQ(kits::ToPixel(2.4F), 2);
    EXPECT_EQ(kits::ToPixel(2.5F), 3);
    EXPECT_EQ(kits::ToPixel(-2.5F), -2);
    EXPECT_EQ(kits::ToPixels(BRect(0, 0, 100, 30)), (PixelRect{0, 0, 101, 31}));
    EXPECT_TRUE(kits::ToPixels(BRect(1, 1, 0, 0)).IsEmpty());
    EXPECT_EQ(kits::ToPixel(NAN), -(1 << 28));
    EXPECT_EQ(kits::ToPixel(INFINITY), 1 << 28);
    EXPECT_EQ(kits::FromPixels({0, 0, 101, 31}), BRect(0, 0, 100, 30));
}

TEST(Canvas, AColumnIsOneOrTwoSharpPixelsWideAtABrokenScale)
{
    const PixelGrid grid(1.5, 0, 0);
    Sheet sheet(6, 3, Canvas::kShown, grid);
    sheet.canvas.StrokeLine(0, 0, 0, 1, kInk);
    sheet.canvas.StrokeLine(3, 0, 3, 0, kInk);
    // Edges of columns 0 to 4: 0, 2, 3, 5, 6.
    EXPECT_EQ(sheet.Picture(), "##...#\n"
                               "##...#\n"
                               "##....\n");
}

TEST(Canvas, BitmapsKeepToTheColumnsOfLinesAtABrokenScale)
{
    const PixelGrid grid(1.5, 0, 0);
    Sheet sheet(6, 2, Canvas::kShown, grid);
    const std::vector<uint32> words = {1, 2, 3, 4};
    sheet.canvas.DrawPixels(words.data(), 4, 4, 1, {0, 0, 4, 1}, {0, 0, 4, 1}, false);
    const uint32 kOpaque = 0xFF000000;
    for (int32 y = 0; y < 2; y++) {
        EXPECT_EQ(std::vector<uint32>(sheet.words.begin() + y * 6, sheet.words.begin() + y * 6 + 6),
                  (std::vector<uint32>{kOpaque + 1, kOpaque + 1, kOpaque + 2, kOpaque + 3, kOpaque + 3, kOpaque + 4}));
    }
    // At twice its width, each of its pixels covers two columns.
    Sheet wide(12, 2, Canvas::kShown, grid);
    wide.canvas.DrawPixels(words.data(), 4, 4, 1, {0, 0, 4, 1}, {0, 0, 8, 1}, false);
    for (int32 x = 0; x < 12; x++)
        EXPECT_EQ(wide.At(x, 0), kOpaque + static_cast<uint32>(x / 3) + 1);
}
