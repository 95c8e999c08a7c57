// SPDX-License-Identifier: MIT
#include "src/chart/PixelRows.h"

#include "kits/interface/Bitmap.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

constexpr int32 kWidth = 5;
constexpr int32 kHeight = 2;

// 0 1 2 3 4 / 10 11 12 13 14
std::vector<uint32> Numbered()
{
    std::vector<uint32> words;
    for (int32 y = 0; y < kHeight; y++)
        for (int32 x = 0; x < kWidth; x++)
            words.push_back(static_cast<uint32>(10 * y + x));
    return words;
}

using Words = std::vector<uint32>;

} // namespace

TEST(PixelWordTest, IsAlphaRedGreenBlue)
{
    EXPECT_EQ(PixelWord({0x12, 0x34, 0x56, 0x78}), 0x78123456u);
    EXPECT_EQ(PixelColor(0x78123456), (rgb_color{0x12, 0x34, 0x56, 0x78}));
}

TEST(PixelRowsTest, ReplacesWholeWordsOnly)
{
    Words words{0x00010203, 0xFF010203, 0x00010203, 0x01010203};
    PixelRows(words.data(), 2, 2).Replace(0x00010203, 7);
    EXPECT_EQ(words, (Words{7, 0xFF010203, 7, 0x01010203}));
}

TEST(PixelRowsTest, FillsUpToTheRightAndBottomPixel)
{
    Words words = Numbered();
    PixelRows(words.data(), kWidth, kHeight).Fill(BRect(1, 1, 2, 1), 99);
    EXPECT_EQ(words, (Words{0, 1, 2, 3, 4, 10, 99, 99, 13, 14}));
}

TEST(PixelRowsTest, FillsNothingOutside)
{
    Words words = Numbered();
    PixelRows rows(words.data(), kWidth, kHeight);
    rows.Fill(BRect(2, 0, 1, 1), 99);
    rows.Fill(BRect(7, 0, 9, 1), 99);
    rows.Fill(BRect(-9, -9, -1, -1), 99);
    rows.Fill(BRect(NAN, 0, NAN, 1), 99);
    EXPECT_EQ(words, Numbered());
    rows.Fill(BRect(-1e30f, -1e30f, 1e30f, 1e30f), 99);
    EXPECT_EQ(words, Words(10, 99));
}

TEST(PixelRowsTest, MovesColumnsLeft)
{
    Words words = Numbered();
    PixelRows(words.data(), kWidth, kHeight).MoveColumns(BRect(2, 0, 3, 1), -1);
    EXPECT_EQ(words, (Words{0, 2, 3, 3, 4, 10, 12, 13, 13, 14}));
}

TEST(PixelRowsTest, MovesColumnsRight)
{
    Words words = Numbered();
    PixelRows(words.data(), kWidth, kHeight).MoveColumns(BRect(0, 0, 3, 0), 1);
    EXPECT_EQ(words, (Words{0, 0, 1, 2, 3, 10, 11, 12, 13, 14}));
}

TEST(PixelRowsTest, LosesWhatMovesOutOfThePicture)
{
    Words words = Numbered();
    PixelRows rows(words.data(), kWidth, kHeight);
    rows.MoveColumns(BRect(0, 0, 4, 0), 3);
    EXPECT_EQ(words, (Words{0, 1, 2, 0, 1, 10, 11, 12, 13, 14}));
    rows.MoveColumns(BRect(0, 1, 4, 1), -4);
    EXPECT_EQ(words, (Words{0, 1, 2, 0, 1, 14, 11, 12, 13, 14}));
    rows.MoveColumns(BRect(0, 0, 4, 1), 5);
    rows.MoveColumns(BRect(0, 0, 4, 1), -5);
    EXPECT_EQ(words, (Words{0, 1, 2, 0, 1, 14, 11, 12, 13, 14}));
}

TEST(PixelRowsTest, AddressesTheWordsOfABitmap)
{
    BBitmap bitmap(BRect(0, 0, 4, 2), B_RGB32);
    PixelRows rows(&bitmap);
    EXPECT_EQ(rows.Width(), 5);
    EXPECT_EQ(rows.Height(), 3);
    rows.Fill(BRect(4, 2, 4, 2), 0x00123456);
    EXPECT_EQ(static_cast<uint32*>(bitmap.Bits())[14], 0x00123456u);
    EXPECT_EQ(rows.At(4, 2), 0x00123456u);
    EXPECT_EQ(rows.At(5, 2), 0u);
    EXPECT_EQ(rows.At(-1, 2), 0u);
}

TEST(PixelRowsTest, OfNoBitmapDoesNothing)
{
    PixelRows rows(nullptr);
    rows.Replace(1, 2);
    rows.Fill(BRect(0, 0, 9, 9), 1);
    rows.MoveColumns(BRect(0, 0, 9, 9), 1);
    EXPECT_EQ(rows.At(0, 0), 0u);
}
