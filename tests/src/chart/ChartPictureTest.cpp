// SPDX-License-Identifier: MIT
#include "tests/src/chart/ChartTestKit.h"

#include <algorithm>

// How samples change a chart's picture, pixel by pixel. Charts are 10 rows high unless a test says otherwise.

namespace {

// width + 1 columns, 10 rows.
std::unique_ptr<ChartView> SmallChart(float width, int32 sources = 1, int16 type = kSolidChart)
{
    auto chart = std::make_unique<ChartView>();
    chart->SetChartType(type);
    AddSources(*chart, sources);
    chart->ResizeTo(width, 9);
    return chart;
}

// Fills a chart of one source with `count` columns of 1, 2, 3 ... pixels.
void ShowStairs(ChartView& chart, int count, int from = 1)
{
    for (int i = from; i < from + count; i++)
        Show(chart, {.memory = (i - 1) * 1000 / 8});
}

} // namespace

TEST(ChartPictureTest, ANewPictureIsCleared)
{
    const auto chart = SmallChart(5);
    EXPECT_EQ(Heights(*chart), std::vector<int>(6, 0));
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(0, 0), 0u);
}

TEST(ChartPictureTest, WithoutSourcesNothingIsDrawn)
{
    ChartView chart;
    Show(chart, {.memory = 500});
    EXPECT_EQ(chart.Picture().Column(), 0);
    EXPECT_STREQ(chart.Captions().ValueText(), "");
}

TEST(ChartPictureTest, ASolidColumnStandsOnTheBottomRow)
{
    const auto chart = SmallChart(5);
    // (9 / 1 - 1) * 0.5, rounded up, above the row of the base.
    Show(*chart, {.memory = 500});
    EXPECT_EQ(Column(*chart, 0), ".....00000");
    Show(*chart, {.memory = 0});
    EXPECT_EQ(Column(*chart, 1), ".........0");
    Show(*chart, {.memory = 1000});
    EXPECT_EQ(Column(*chart, 2), ".000000000");
    EXPECT_EQ(Column(*chart, 3), "..........");
}

TEST(ChartPictureTest, ColumnZeroIsDrawnOnceAndThenHeldByItsMark)
{
    const auto chart = SmallChart(5);
    Show(*chart, {.memory = 500});
    EXPECT_EQ(chart->Picture().Column(), kColumnZeroDrawn);
    Show(*chart, {.memory = 500});
    EXPECT_EQ(chart->Picture().Column(), 1);
    Show(*chart, {.memory = 500});
    EXPECT_EQ(chart->Picture().Column(), 2);
    EXPECT_EQ(Heights(*chart), (std::vector<int>{5, 5, 5, 0, 0, 0}));
}

TEST(ChartPictureTest, PixelsAreTheColoursWholeWords)
{
    ChartView chart;
    AddSources(chart, 2);
    Show(chart, {.memory = 500, .teams = 500});
    PixelRows rows(chart.Picture().Bitmap());
    EXPECT_EQ(rows.At(0, 30), 0x006464DCu);
    EXPECT_EQ(rows.At(0, 22), 0xFF6C6CE4u);
}

TEST(ChartPictureTest, FourFullSourcesRiseTwentyFourPixelsEach)
{
    ChartView chart;
    BMessage archive = SourceArchive(VP_USED_MEMORY);
    for (int i = 0; i < 4; i++)
        chart.AddValueProvider(&archive, -1);
    chart.ResizeTo(5, 100);
    Show(chart, {.memory = 1000});
    EXPECT_EQ(Column(chart, 0),
              "." + std::string(25, '3') + std::string(25, '2') + std::string(25, '1') + std::string(25, '0'));
}

TEST(ChartPictureTest, StackedSourcesBeginAboveEachOther)
{
    const auto chart = SmallChart(5, 3);
    // At most 9 / 3 - 1 = 2 pixels each, and one for the step.
    Show(*chart, {.memory = 1000, .teams = 0, .threads = 500});
    EXPECT_EQ(Column(*chart, 0), "....221000");
}

TEST(ChartPictureTest, ALineJoinsTheSamples)
{
    const auto chart = SmallChart(5, 1, kLineChart);
    Show(*chart, {.memory = 500});
    EXPECT_EQ(Column(*chart, 0), ".....0....");
    Show(*chart, {.memory = 1000});
    // From (0, 5) to (1, 1).
    EXPECT_EQ(Heights(*chart)[0] + Heights(*chart)[1], 5);
    EXPECT_EQ(Column(*chart, 1)[1], '0');
    EXPECT_EQ(Column(*chart, 0)[5], '0');
    EXPECT_EQ(Column(*chart, 1)[5], '.');
    Show(*chart, {.memory = 1000});
    EXPECT_EQ(Column(*chart, 2), ".0........");
}

TEST(ChartPictureTest, APointIsOnePixel)
{
    const auto chart = SmallChart(5, 2, kPointChart);
    Show(*chart, {.memory = 1000, .teams = 1000});
    // 9 / 2 - 1 = 3.5, so 4 pixels up from row 9, then 4 from the row above that.
    EXPECT_EQ(Column(*chart, 0), "1....0....");
}

TEST(ChartPictureTest, APageKeepsItsNewestColumns)
{
    const auto chart = SmallChart(8);
    ShowStairs(*chart, 9);
    EXPECT_EQ(Heights(*chart), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    chart->SetPageSize(0.5f);
    Show(*chart, {.memory = 500});
    // Four columns stay, and the new one follows them.
    EXPECT_EQ(Heights(*chart), (std::vector<int>{6, 7, 8, 9, 5, 0, 0, 0, 0}));
    EXPECT_EQ(chart->Picture().Column(), 4);
}

TEST(ChartPictureTest, AChartOfAHundredKeepsTheNewestSeventyFive)
{
    const auto chart = SmallChart(100);
    for (int i = 0; i <= 100; i++)
        Show(*chart, {.memory = i < 50 ? 0 : 1000});
    EXPECT_EQ(chart->Picture().Column(), 100);
    Show(*chart, {.memory = 500});
    EXPECT_EQ(chart->Picture().Column(), 75);
    const std::vector<int> heights = Heights(*chart);
    // Columns 26 to 100 came to 0 to 74.
    EXPECT_EQ(std::count(heights.begin(), heights.begin() + 24, 1), 24);
    EXPECT_EQ(std::count(heights.begin() + 24, heights.begin() + 75, 9), 51);
    EXPECT_EQ(heights[75], 5);
    EXPECT_EQ(std::count(heights.begin() + 76, heights.end(), 0), 25);
}

TEST(ChartPictureTest, AWholePageScrollsByOneColumn)
{
    const auto chart = SmallChart(8);
    chart->SetPageSize(1);
    ShowStairs(*chart, 9);
    for (int i = 0; i < 3; i++) {
        Show(*chart, {.memory = 500});
        EXPECT_EQ(chart->Picture().Column(), 8);
    }
    EXPECT_EQ(Heights(*chart), (std::vector<int>{4, 5, 6, 7, 8, 9, 5, 5, 5}));
}

TEST(ChartPictureTest, ABorderLeavesOneRowAndColumnFree)
{
    BMessage archive;
    archive.AddBool("ShowBorder", true);
    archive.AddRect("_frame", BRect(0, 0, 8, 11));
    ChartView chart(&archive);
    AddSources(chart, 1);
    // The first sample goes to column 2: column 1 counts as drawn.
    Show(chart, {.memory = 1000});
    EXPECT_EQ(chart.Picture().Column(), 2);
    EXPECT_EQ(Column(chart, 2), "..000000000.");
    EXPECT_EQ(Column(chart, 1), "............");
}

TEST(ChartPictureTest, APageInsideABorder)
{
    BMessage archive;
    archive.AddBool("ShowBorder", true);
    archive.AddFloat("PageSize", 0.5f);
    archive.AddRect("_frame", BRect(0, 0, 10, 11));
    ChartView chart(&archive);
    AddSources(chart, 1);
    ShowStairs(chart, 8);
    EXPECT_EQ(chart.Picture().Column(), 9);
    EXPECT_EQ(Heights(chart), (std::vector<int>{0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 0}));
    Show(chart, {.memory = 1000});
    // Of the columns 1 to 9 four stay at 1 to 4, and the new one is the fifth.
    EXPECT_EQ(chart.Picture().Column(), 5);
    EXPECT_EQ(Heights(chart), (std::vector<int>{0, 5, 6, 7, 8, 9, 0, 0, 0, 0, 0}));
}

TEST(ChartPictureTest, ScrollingInsideABorder)
{
    BMessage archive;
    archive.AddBool("ShowBorder", true);
    archive.AddFloat("PageSize", 1);
    archive.AddRect("_frame", BRect(0, 0, 10, 11));
    ChartView chart(&archive);
    AddSources(chart, 1);
    ShowStairs(chart, 9);
    EXPECT_EQ(chart.Picture().Column(), 9);
    EXPECT_EQ(Heights(chart), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0}));
}

TEST(ChartPictureTest, ABorderOnAFullScrollingChartKeepsTheNewestColumnInSight)
{
    const auto chart = SmallChart(8);
    chart->SetPageSize(1);
    ShowStairs(*chart, 9);
    chart->SetShowBorder(true);
    Show(*chart, {.memory = 1000});
    EXPECT_EQ(chart->Picture().Column(), 7);
    EXPECT_NE(Heights(*chart)[7], 0);
}

TEST(ChartPictureTest, ALineGoesOnAfterAWrap)
{
    for (float page : {0.5f, 1.0f}) {
        const auto chart = SmallChart(8, 1, kLineChart);
        chart->SetPageSize(page);
        for (int i = 0; i < 10; i++)
            Show(*chart, {.memory = 500});
        std::vector<int> heights = Heights(*chart);
        const auto drawn = static_cast<size_t>(chart->Picture().Column()) + 1;
        EXPECT_EQ(std::count(heights.begin(), heights.begin() + static_cast<ptrdiff_t>(drawn), 1),
                  static_cast<ptrdiff_t>(drawn));
    }
}

TEST(ChartPictureTest, RecolouringASourceRecoloursItsHistory)
{
    const auto chart = SmallChart(5, 2);
    Show(*chart, {.memory = 500, .teams = 500});
    const std::string before = Column(*chart, 0);
    chart->SetChartColor({1, 2, 3, 4}, 1);
    EXPECT_EQ(Column(*chart, 0), before);
    EXPECT_NE(before.find('1'), std::string::npos);
    PixelRows rows(chart->Picture().Bitmap());
    EXPECT_EQ(rows.At(0, static_cast<int32>(before.find('1'))), 0x04010203u);
}

TEST(ChartPictureTest, RecolouringComparesAlphaToo)
{
    const auto chart = SmallChart(5);
    chart->SetChartColor({100, 100, 220, 255}, 1);
    Show(*chart, {.memory = 1000});
    chart->SetChartColor({9, 9, 9, 9}, 1);
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(0, 9), 0x006464DCu);
}

TEST(ChartPictureTest, TheBackgroundIsRecolouredInPlace)
{
    const auto chart = SmallChart(5);
    Show(*chart, {.memory = 500});
    chart->SetBackgroundColor({10, 20, 30, 0});
    EXPECT_EQ(chart->Picture().LowColor(), (rgb_color{10, 20, 30, 0}));
    EXPECT_EQ(Column(*chart, 0), ".....00000");
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(0, 0), 0x000A141Eu);
    EXPECT_EQ(Column(*chart, 1), "..........");
}

TEST(ChartPictureTest, TransparencyTakesTheBackgroundsPlace)
{
    const auto chart = SmallChart(5);
    Show(*chart, {.memory = 500});
    chart->SetTransparent(true);
    EXPECT_EQ(chart->Picture().LowColor(), B_TRANSPARENT_COLOR);
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(0, 0), B_TRANSPARENT_MAGIC_RGBA32);
    EXPECT_EQ(Column(*chart, 0), ".....00000");

    // Changes while the chart is hidden take effect when it is shown again.
    chart->SetBackgroundColor({10, 20, 30, 0});
    EXPECT_EQ(chart->Picture().LowColor(), B_TRANSPARENT_COLOR);
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(0, 0), B_TRANSPARENT_MAGIC_RGBA32);
    chart->SetTransparent(false);
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(0, 0), 0x000A141Eu);
    EXPECT_EQ(Column(*chart, 0), ".....00000");
}

TEST(ChartPictureTest, ATransparentChartWrapsTransparently)
{
    const auto chart = SmallChart(8);
    chart->SetTransparent(true);
    ShowStairs(*chart, 9);
    Show(*chart, {.memory = 0});
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(8, 0), B_TRANSPARENT_MAGIC_RGBA32);
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(8, 9), B_TRANSPARENT_MAGIC_RGBA32);
}

TEST(ChartPictureTest, LockingTakesTheDesktopsColourAndGivesItBack)
{
    const auto chart = SmallChart(5);
    chart->SetBackgroundColor({10, 20, 30, 0});
    Show(*chart, {.memory = 500});
    chart->SetLockBgColor(true);
    const rgb_color desktop = chart->Picture().LowColor();
    EXPECT_EQ(PixelColor(PixelRows(chart->Picture().Bitmap()).At(0, 0)), desktop);
    EXPECT_NE(desktop, (rgb_color{10, 20, 30, 0}));
    // The background is remembered, not shown.
    chart->SetBackgroundColor({1, 1, 1, 0});
    EXPECT_EQ(chart->Picture().LowColor(), desktop);
    chart->SetLockBgColor(false);
    EXPECT_EQ(chart->Picture().LowColor(), (rgb_color{1, 1, 1, 0}));
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(0, 0), 0x00010101u);
}

TEST(ChartPictureTest, ATransparentChartIsNotLocked)
{
    ChartView chart;
    chart.SetTransparent(true);
    chart.SetLockBgColor(true);
    EXPECT_FALSE(chart.Settings().lockBgColor);
    EXPECT_EQ(chart.Picture().LowColor(), B_TRANSPARENT_COLOR);
}

TEST(ChartPictureTest, ResizingStretchesTheHistory)
{
    const auto chart = SmallChart(3);
    Show(*chart, {.memory = 1000});
    Show(*chart, {.memory = 0});
    Show(*chart, {.memory = 1000});
    EXPECT_EQ(chart->Picture().Column(), 2);
    // Four columns become eight, ten rows become twenty.
    chart->ResizeTo(7, 19);
    EXPECT_EQ(Heights(*chart), (std::vector<int>{18, 18, 2, 2, 18, 18, 0, 0}));
    EXPECT_EQ(chart->Picture().Column(), 4);
    chart->ResizeTo(3, 9);
    EXPECT_EQ(Heights(*chart), (std::vector<int>{9, 1, 9, 0}));
    EXPECT_EQ(chart->Picture().Column(), 1);
}

TEST(ChartPictureTest, ResizingToTheSameSizeKeepsThePicture)
{
    const auto chart = SmallChart(5);
    const BBitmap* picture = chart->Picture().Bitmap();
    chart->ResizeTo(5, 9);
    EXPECT_EQ(chart->Picture().Bitmap(), picture);
}

TEST(ChartPictureTest, NoSizeIsTooSmall)
{
    const auto chart = SmallChart(5, 2);
    chart->ResizeTo(-50, -89);
    EXPECT_EQ(chart->Bounds(), BRect(0, 0, 0, 0));
    Show(*chart, {.memory = 1000, .teams = 1000});
    Show(*chart, {.memory = 1000, .teams = 1000});
    chart->SetShowBorder(true);
    Show(*chart, {.memory = 1000, .teams = 1000});
    chart->SetMode(kGaugeMode);
    Show(*chart, {.memory = 1000, .teams = 1000});
}

TEST(ChartPictureTest, TheGaugeAndBackLosesTheHistory)
{
    const auto chart = SmallChart(5);
    Show(*chart, {.memory = 500});
    chart->SetMode(kGaugeMode);
    EXPECT_EQ(chart->Picture().Bitmap(), nullptr);
    chart->SetMode(kChartMode);
    EXPECT_EQ(Heights(*chart), std::vector<int>(6, 0));
    EXPECT_EQ(chart->Picture().Column(), 0);
}

TEST(ChartPictureTest, TheBordersRowIsFilledWhenItGoes)
{
    const auto chart = SmallChart(8);
    chart->SetShowBorder(true);
    for (int i = 0; i < 4; i++)
        Show(*chart, {.memory = 0});
    EXPECT_EQ(Column(*chart, 3), "........0.");
    chart->SetShowBorder(false);
    EXPECT_EQ(Column(*chart, 3), "........00");
    EXPECT_EQ(Column(*chart, 4), "..........");

    const auto points = SmallChart(8, 1, kPointChart);
    points->SetShowBorder(true);
    Show(*points, {.memory = 0});
    points->SetShowBorder(false);
    EXPECT_EQ(Column(*points, 0), "........0.");
}

TEST(ChartPictureTest, CalcAAGoesTowardsItsTarget)
{
    ChartView chart;
    const rgb_color text{216, 216, 216, 0};
    EXPECT_EQ(chart.Settings().CalcAA(text, kAATargetAverage, 0.25f), (rgb_color{91, 91, 136, 0}));
    EXPECT_EQ(chart.Settings().CalcAA(text, kAATargetChart, 0), (rgb_color{100, 100, 220, 0}));
    EXPECT_EQ(chart.Settings().CalcAA(text, kAATargetBackground, 0), (rgb_color{0, 0, 0, 0}));
    EXPECT_EQ(chart.Settings().CalcAA(text, kAATargetBackground, 1), text);
    chart.SetBackgroundColor({200, 0, 0, 0});
    EXPECT_EQ(chart.Settings().CalcAA(text, kAATargetAverage, 0), (rgb_color{150, 50, 110, 0}));
}

TEST(ChartPictureTest, TheValueCaptionShowsItsOwnSource)
{
    ChartView chart;
    AddSources(chart, 1);
    BMessage archive;
    const BMessage caption = SourceArchive(VP_ALLOCATED_TEAMS);
    archive.AddMessage("ValueVP", &caption);
    chart.LoadPrefsFrom(&archive);
    Show(chart, {.memory = 500, .teams = 17});
    EXPECT_STREQ(chart.Captions().ValueText(), "17 teams");
}

TEST(ChartPictureTest, TheValueCaptionChangesAtEveryNthRefresh)
{
    ChartView chart;
    AddSources(chart, 1);
    BMessage archive;
    const BMessage caption = SourceArchive(VP_ALLOCATED_TEAMS);
    archive.AddMessage("ValueVP", &caption);
    archive.AddInt16("ValueSkipValue", 2);
    chart.LoadPrefsFrom(&archive);
    const char* expected[] = {"1 teams", "1 teams", "1 teams", "4 teams", "4 teams"};
    for (int i = 0; i < 5; i++) {
        Show(chart, {.teams = i + 1});
        EXPECT_STREQ(chart.Captions().ValueText(), expected[i]);
    }
}

TEST(ChartPictureTest, ASmoothedCaptionSeesTheSamplesThatItDoesNotShow)
{
    // A caption that shows every sample and one that shows every third end at the same value of the same source.
    const BMessage message = SampleMessage({});
    std::string shown[2];
    for (int16 skip : {0, 2}) {
        ChartView chart;
        AddSources(chart, 1);
        BMessage archive;
        const BMessage caption = SourceArchive(VP_ALL_CPUS_IDLE, VP_EXP_AVERAGE);
        archive.AddMessage("ValueVP", &caption);
        archive.AddInt16("ValueSkipValue", skip);
        chart.LoadPrefsFrom(&archive);
        for (int i = 0; i < 4; i++) {
            BMessage sample = SampleMessage({});
            SysinfoNodeBody node{};
            node.elapsed = 200000;
            node.totalActive = i < 2 ? 0 : 200000;
            node.info.cpu_count = 1;
            kNodeBodyField.Remove(&sample);
            AddRecord(&sample, kNodeBodyField, &node, sizeof(node));
            Sysinfo sampler(&sample);
            SysinfoNode newest(&sample);
            chart.RefreshChart(&sampler, &newest);
        }
        shown[skip / 2] = chart.Captions().ValueText();
    }
    EXPECT_EQ(shown[0], "50.0 %");
    EXPECT_EQ(shown[1], shown[0]);
}
