// SPDX-License-Identifier: MIT
#include "src/chart/ChartPicture.h"

#include "src/chart/ChartSettings.h"
#include "src/chart/ChartSteps.h"
#include "src/chart/PixelRows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// How samples change a picture that belongs to no view, pixel by pixel, in a program that has no screen.

namespace {

class PictureTest : public testing::Test {
protected:
    /// Makes a picture of 6 x 10 pixels, unless told otherwise, with this many sources.
    ChartPicture& Make(int32 sources, BRect bounds = BRect(0, 0, 5, 9))
    {
        picture = std::make_unique<ChartPicture>(settings, bounds);
        for (int32 i = 0; i < sources; i++)
            picture->InsertSource(i);
        return *picture;
    }

    bool Add(std::vector<double> values)
    {
        ChartPicture::Shares shares{};
        std::copy(values.begin(), values.end(), shares.begin());
        time += 200000;
        if (settings.mode == kChartMode)
            return picture->AddColumn(time, shares);
        picture->AddGauge(time, shares);
        return false;
    }

    /// Returns a column of the picture from top to bottom: '0' to '7' for a source's colour, '.' for the low colour.
    std::string Column(int32 x) const
    {
        const PixelRows rows(picture->Bitmap());
        std::string letters;
        for (int32 y = 0; y < rows.Height(); y++) {
            const rgb_color color = PixelColor(rows.At(x, y));
            char letter = color == picture->LowColor() ? '.' : '?';
            for (size_t i = 0; i < settings.chartColors.size(); i++)
                if (color == settings.chartColors[i])
                    letter = static_cast<char>('0' + i);
            letters.push_back(letter);
        }
        return letters;
    }

    ChartSettings settings;
    std::unique_ptr<ChartPicture> picture;
    bigtime_t time = 0;
};

} // namespace

TEST_F(PictureTest, BeginsEmptyInTheLowColour)
{
    Make(1);
    EXPECT_EQ(Column(0), "..........");
    EXPECT_EQ(picture->Column(), 0);
    EXPECT_EQ(picture->History().CountRows(), 0);
}

TEST_F(PictureTest, StacksTheSourcesOfASample)
{
    Make(2);
    // Each has 9 / 2 - 1 = 3.5 pixels at most, rounded up, and the row of its base.
    EXPECT_FALSE(Add({1, 0.5}));
    EXPECT_EQ(Column(0), "..11100000");
    EXPECT_EQ(picture->StrokeAt(0).from, BPoint(0, 9));
    EXPECT_EQ(picture->StrokeAt(0).to, BPoint(0, 5));
    EXPECT_EQ(picture->StrokeAt(1).from, BPoint(0, 4));
    EXPECT_EQ(picture->StrokeAt(1).to, BPoint(0, 2));
    EXPECT_EQ(picture->Column(), kColumnZeroDrawn);
}

TEST_F(PictureTest, DrawsLinesAndPoints)
{
    settings.chartType = kLineChart;
    Make(1);
    Add({0});
    Add({1});
    EXPECT_EQ(picture->StrokeAt(0).from, BPoint(0, 9));
    EXPECT_EQ(picture->StrokeAt(0).to, BPoint(1, 1));
    settings.chartType = kPointChart;
    Add({0.5});
    EXPECT_EQ(Column(2), ".....0....");
}

TEST_F(PictureTest, WrapsWhenItIsFullAndForgetsWhatItLost)
{
    settings.pageSize = 0.5f;
    Make(1);
    for (int i = 0; i < 6; i++)
        EXPECT_FALSE(Add({i / 8.0}));
    EXPECT_EQ(picture->History().CountRows(), 6);
    EXPECT_TRUE(Add({1}));
    // The half of a width of 5 is 2 columns: the newest two stay, and the new one follows them.
    EXPECT_EQ(picture->Column(), 2);
    EXPECT_EQ(Column(0), ".....00000");
    EXPECT_EQ(Column(1), "....000000");
    EXPECT_EQ(Column(2), ".000000000");
    EXPECT_EQ(Column(3), "..........");
    EXPECT_EQ(picture->History().CountRows(), 3);
}

TEST_F(PictureTest, ScrollsByAColumnWithAWholePage)
{
    settings.pageSize = 1;
    Make(1);
    for (int i = 0; i < 6; i++)
        Add({0});
    EXPECT_TRUE(Add({1}));
    EXPECT_EQ(picture->Column(), 5);
    EXPECT_EQ(Column(4), ".........0");
    EXPECT_EQ(Column(5), ".000000000");
}

TEST_F(PictureTest, RecoloursWhatItHasDrawn)
{
    Make(1);
    Add({0.5});
    const rgb_color before = settings.chartColors[0];
    settings.chartColors[0] = {1, 2, 3, 4};
    picture->Replace(before, settings.chartColors[0]);
    picture->SetLowColor({9, 8, 7, 6}, true);
    EXPECT_EQ(Column(0), ".....00000");
    EXPECT_EQ(PixelRows(picture->Bitmap()).At(0, 9), PixelWord({1, 2, 3, 4}));
    EXPECT_EQ(PixelRows(picture->Bitmap()).At(0, 0), PixelWord({9, 8, 7, 6}));
    picture->SetLowColor({5, 5, 5, 5}, false);
    EXPECT_EQ(PixelRows(picture->Bitmap()).At(0, 0), PixelWord({9, 8, 7, 6}));
}

TEST_F(PictureTest, StretchesToANewSize)
{
    Make(1);
    for (int i = 0; i < 6; i++)
        Add({0.5});
    picture->Resize(BRect(0, 0, 11, 9));
    EXPECT_EQ(picture->Column(), 11);
    for (int32 x = 0; x < 12; x++)
        EXPECT_EQ(Column(x), ".....00000") << x;
    EXPECT_EQ(picture->History().CountRows(), 6);
}

TEST_F(PictureTest, MovesItsNewestColumnElsewhere)
{
    Make(1);
    Add({0});
    Add({1});
    EXPECT_TRUE(picture->MoveColumnTo(4));
    EXPECT_EQ(picture->Column(), 3);
    EXPECT_EQ(Column(4), ".000000000");
    EXPECT_EQ(Column(2), "..........");
    EXPECT_FALSE(picture->MoveColumnTo(3));
    EXPECT_FALSE(picture->MoveColumnTo(100));
}

TEST_F(PictureTest, KnowsTheSourceAtAPlace)
{
    Make(2);
    Add({1, 1});
    EXPECT_EQ(picture->SourceAt(BPoint(0, 9)), 0);
    EXPECT_EQ(picture->SourceAt(BPoint(0, 2)), 1);
    EXPECT_EQ(picture->SourceAt(BPoint(3, 9)), -1);
    settings.mode = kGaugeMode;
    Make(2, BRect(0, 0, 101, 9));
    // Each has 101 / 2 - 1 = 49.5 pixels, and a pixel of step.
    Add({1, 0.5});
    EXPECT_EQ(picture->SourceAt(BPoint(49, 5)), 0);
    EXPECT_EQ(picture->SourceAt(BPoint(60, 5)), 1);
    EXPECT_EQ(picture->SourceAt(BPoint(90, 5)), -1);
}

TEST_F(PictureTest, AGaugeHasNoBitmapAndBeginsTheChartAnew)
{
    Make(1);
    Add({1});
    settings.mode = kGaugeMode;
    picture->Clear();
    EXPECT_EQ(picture->Bitmap(), nullptr);
    EXPECT_EQ(picture->History().CountRows(), 0);
    Add({1});
    EXPECT_EQ(picture->History().CountRows(), 1);
    EXPECT_EQ(picture->NewestShares()[0], 1);
    settings.mode = kChartMode;
    picture->Clear();
    EXPECT_EQ(Column(0), "..........");
    EXPECT_EQ(picture->Column(), 0);
}

TEST_F(PictureTest, OneThatMemoryCannotHoldIsNotMade)
{
    Make(1, BRect(0, 0, 16383, 16383));
    EXPECT_EQ(picture->Bitmap(), nullptr);
    EXPECT_FALSE(picture->MoveColumnTo(3));
    picture->Replace({1, 1, 1, 1}, {2, 2, 2, 2});
    EXPECT_EQ(picture->SourceAt(BPoint(1, 1)), -1);
    picture->Resize(BRect(0, 0, 5, 9));
    EXPECT_EQ(Column(0), "..........");
}
