// SPDX-License-Identifier: MIT
#include "kits/interface/Screen.h"
#include "tests/src/chart/ChartTestKit.h"

#include <set>

// What a chart shows in a window, pixel by pixel. The corner above and left of (8, 8) belongs to the dragger.

namespace {

class ChartScreenTest : public ChartWindowTest {
protected:
    /// Checks that the screen shows what drawing everything would show.
    void ExpectUpToDate()
    {
        test::Turn();
        const std::vector<uint32> shown = test::PixelsOf(chart);
        chart->Draw(chart->Bounds());
        const std::vector<uint32> whole = test::PixelsOf(chart);
        ASSERT_EQ(shown.size(), whole.size());
        const auto [place, unused] = std::mismatch(shown.begin(), shown.end(), whole.begin());
        const auto columns = static_cast<ptrdiff_t>(chart->Bounds().right) + 1;
        const ptrdiff_t index = place - shown.begin();
        EXPECT_TRUE(place == shown.end()) << "at " << index % columns << ", " << index / columns;
    }

    /// Returns one column, top first, in the form of Column() in ChartTestKit.h.
    std::string ShownColumn(int32 x) const
    {
        std::string letters;
        for (int32 y = 0; y <= chart->Bounds().bottom; y++) {
            const uint32 word = Shown(x, y);
            char letter = word == Word(chart->Picture().LowColor()) ? '.' : '?';
            for (int32 i = 0; i < kMaxSources; i++)
                if (word == Word(chart->ChartColor(i)))
                    letter = static_cast<char>('0' + i);
            if (chart->Settings().showBorder && word == Word(chart->Settings().borderColor))
                letter = '#';
            letters.push_back(letter);
        }
        return letters;
    }

    std::set<uint32> ColorsIn(BRect rect) const
    {
        std::set<uint32> colors;
        for (float y = rect.top; y <= rect.bottom; y++)
            for (float x = rect.left; x <= rect.right; x++)
                colors.insert(Shown(static_cast<int32>(x), static_cast<int32>(y)));
        return colors;
    }
};

} // namespace

TEST_F(ChartScreenTest, ANewChartIsCleared)
{
    AddChart(20, 19);
    for (int32 x = 8; x <= 20; x++)
        EXPECT_EQ(ShownColumn(x), std::string(20, '.'));
}

TEST_F(ChartScreenTest, EachTypeOfColumnComesToTheScreen)
{
    for (int16 type : {kSolidChart, kLineChart, kPointChart}) {
        AddChart(30, 19);
        chart->SetChartType(type);
        AddSources(*chart, 3);
        for (int i = 0; i < 25; i++) {
            Show(*chart, {.memory = 40 * i, .teams = 1000 - 40 * i, .threads = 500});
            EXPECT_EQ(ShownColumn(i), Column(*chart, i));
        }
        ExpectUpToDate();
        chart->RemoveSelf();
        delete chart;
    }
}

TEST_F(ChartScreenTest, TheScreenFollowsEveryWrap)
{
    for (bool border : {false, true}) {
        for (float page : {0.0f, 0.3f, 0.75f, 0.99f, 1.0f}) {
            AddChart(30, 19);
            chart->SetShowBorder(border);
            chart->SetPageSize(page);
            AddSources(*chart, 2);
            for (int i = 0; i < 80; i++) {
                Show(*chart, {.memory = (37 * i) % 1000, .teams = (91 * i) % 1000});
                if (i % 7 == 0)
                    ExpectUpToDate();
            }
            ExpectUpToDate();
            chart->RemoveSelf();
            delete chart;
        }
    }
}

TEST_F(ChartScreenTest, ABorderSurroundsTheChart)
{
    AddChart(20, 19);
    AddSources(*chart, 1);
    chart->SetShowBorder(true);
    for (int i = 0; i < 12; i++)
        Show(*chart, {.memory = 1000});
    EXPECT_EQ(ShownColumn(20), std::string(20, '#'));
    // 17 rows of height inside, 16 above the base.
    EXPECT_EQ(ShownColumn(10), "#." + std::string(17, '0') + "#");
    chart->SetBorderColor({1, 2, 3, 0});
    EXPECT_EQ(ShownColumn(20), std::string(20, '#'));
    chart->SetShowBorder(false);
    EXPECT_EQ(ShownColumn(10), ".." + std::string(18, '0'));
    EXPECT_EQ(ShownColumn(20), std::string(20, '.'));
}

TEST_F(ChartScreenTest, ColoursChangeInTheHistory)
{
    AddChart(20, 19);
    AddSources(*chart, 2);
    for (int i = 0; i < 12; i++)
        Show(*chart, {.memory = 500, .teams = 500});
    const std::string before = ShownColumn(10);
    chart->SetChartColor({200, 10, 10, 0}, 0);
    chart->SetChartColor({10, 200, 10, 0}, 1);
    chart->SetBackgroundColor({10, 10, 200, 0});
    EXPECT_EQ(ShownColumn(10), before);
    ExpectUpToDate();
}

TEST_F(ChartScreenTest, ATransparentChartShowsItsParent)
{
    auto* parent = new BView(window->Bounds(), "", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    parent->SetViewColor(12, 34, 56);
    window->AddChild(parent);
    chart = new ChartView();
    chart->SetShowTitle(false);
    chart->SetShowValue(false);
    AddSources(*chart, 1);
    parent->AddChild(chart);
    test::Turn();
    for (int i = 0; i < 12; i++)
        Show(*chart, {.memory = 500});
    chart->SetTransparent(true);
    chart->Invalidate();
    test::Turn();
    EXPECT_EQ(test::PixelOf(window, 10, 2) & 0xFFFFFF, 0x0C2238u);
    EXPECT_EQ(test::PixelOf(window, 10, 29) & 0xFFFFFF, Word(chart->ChartColor(0)));
    chart->SetTransparent(false);
    chart->Invalidate();
    test::Turn();
    EXPECT_EQ(test::PixelOf(window, 10, 2) & 0xFFFFFF, 0u);
}

TEST_F(ChartScreenTest, TheLockFollowsTheDesktopAtTheNextSample)
{
    AddChart(20, 19);
    AddSources(*chart, 1);
    BMessage archive;
    archive.AddBool("LockBgColor", true);
    chart->LoadPrefsFrom(&archive);
    const rgb_color desktop = BScreen(window).DesktopColor();
    EXPECT_EQ(chart->Picture().LowColor(), desktop);
    ExpectUpToDate();
    EXPECT_EQ(Shown(15, 2), Word(desktop));
}

TEST_F(ChartScreenTest, HorizontalGaugesFillFromTheLeft)
{
    AddChart(40, 19);
    AddSources(*chart, 2);
    chart->SetMode(kGaugeMode);
    EXPECT_EQ(ShownColumn(10), std::string(20, '.'));
    Show(*chart, {.memory = 1000, .teams = 500});
    // 40 / 2 - 1 = 19 for a full source; the second begins one row further and has half of that, rounded.
    EXPECT_EQ(ShownColumn(19), std::string(20, '0'));
    EXPECT_EQ(ShownColumn(20), std::string(20, '1'));
    EXPECT_EQ(ShownColumn(30), std::string(20, '1'));
    EXPECT_EQ(ShownColumn(31), std::string(20, '.'));
    EXPECT_EQ(ShownColumn(40), std::string(20, '.'));
    ExpectUpToDate();
    Show(*chart, {.memory = 0, .teams = 0});
    EXPECT_EQ(ShownColumn(10), std::string(20, '.'));
    ExpectUpToDate();
}

TEST_F(ChartScreenTest, VerticalGaugesFillFromTheBottom)
{
    AddChart(20, 40);
    AddSources(*chart, 2);
    chart->SetVertical(true);
    chart->SetMode(kGaugeMode);
    Show(*chart, {.memory = 1000, .teams = 1000});
    // The first reaches from 39 - 19 to the bottom, the second up to 19 - 19 and one row into the first. The rest
    // begins one row below the second's top.
    EXPECT_EQ(ShownColumn(10), ".." + std::string(20, '1') + std::string(19, '0'));
    ExpectUpToDate();
    Show(*chart, {.memory = 500, .teams = 0});
    // 9.5 pixels: the first begins at row 29.5, shown as 30. The second reaches from 28.5 to 30.5, that is 29 to 31,
    // and the rest ends at 29.5.
    EXPECT_EQ(ShownColumn(10), std::string(31, '.') + "1" + std::string(9, '0'));
}

TEST_F(ChartScreenTest, AGaugeInsideABorder)
{
    AddChart(40, 19);
    AddSources(*chart, 1);
    chart->SetMode(kGaugeMode);
    chart->SetShowBorder(true);
    Show(*chart, {.memory = 500});
    // (38 - 1) / 2 from 0 on.
    EXPECT_EQ(ShownColumn(10), "#" + std::string(18, '0') + "#");
    EXPECT_EQ(ShownColumn(19), "#" + std::string(18, '0') + "#");
    EXPECT_EQ(ShownColumn(20), "#" + std::string(18, '.') + "#");
    EXPECT_EQ(ShownColumn(40), std::string(20, '#'));
}

TEST_F(ChartScreenTest, AGaugeWithoutSourcesIsCleared)
{
    AddChart(40, 19);
    chart->SetMode(kGaugeMode);
    Show(*chart, {.memory = 500});
    ExpectUpToDate();
    EXPECT_EQ(ShownColumn(10), std::string(20, '.'));
}

TEST_F(ChartScreenTest, ResizingShowsTheStretchedPicture)
{
    AddChart(20, 19);
    AddSources(*chart, 1);
    for (int i = 0; i < 15; i++)
        Show(*chart, {.memory = 1000});
    chart->ResizeTo(50, 25);
    ExpectUpToDate();
    for (int32 x = 8; x <= 50; x++)
        EXPECT_EQ(ShownColumn(x), Column(*chart, x));
}

TEST_F(ChartScreenTest, ATitleIsBlendedFromItsAntialiasingColour)
{
    AddChart(200, 39);
    chart->SetTitleColor({255, 0, 0, 0});
    chart->SetTitleAATarget(kAATargetBackground);
    chart->SetTitleAAValue(0.5f);
    chart->SetTitle("Title");
    chart->SetShowTitle(true);
    const BRect rect = chart->Captions().Title().drawn;
    ASSERT_TRUE(rect.IsValid());
    EXPECT_EQ(rect.LeftTop(), BPoint(chart->Settings().title.where.x,
                                     chart->Settings().title.where.y -
                                         (rect.Height() - (rect.bottom - chart->Settings().title.where.y))));
    // Coverage 0 leaves the background, 1 gives the colour itself, and anything between gives between half of the
    // colour and all of it.
    const std::set<uint32> colors = ColorsIn(rect);
    EXPECT_TRUE(colors.count(0x000000));
    EXPECT_TRUE(colors.count(0xFF0000));
    EXPECT_GT(colors.size(), 2u);
    for (uint32 color : colors) {
        if (color != 0) {
            EXPECT_GE(color >> 16, 0x7Fu);
            EXPECT_EQ(color & 0xFFFF, 0u);
        }
    }
}

TEST_F(ChartScreenTest, WithoutAntialiasingATitleHasOneColour)
{
    AddChart(200, 39);
    chart->SetTitleColor({255, 0, 0, 0});
    chart->SetTitle("Title");
    chart->SetShowTitle(true);
    EXPECT_GT(ColorsIn(chart->Captions().Title().drawn).size(), 2u);
    chart->SetTitleAAValue(0);
    EXPECT_EQ(ColorsIn(chart->Captions().Title().drawn), (std::set<uint32>{0x000000, 0xFF0000}));
    EXPECT_TRUE(chart->Settings().title.font.Flags() & B_DISABLE_ANTIALIASING);
    chart->SetTitleAAValue(1);
    EXPECT_FALSE(chart->Settings().title.font.Flags() & B_DISABLE_ANTIALIASING);
}

TEST_F(ChartScreenTest, HidingACaptionErasesIt)
{
    AddChart(200, 39);
    const std::vector<uint32> before = test::PixelsOf(chart);
    chart->SetShowTitle(true);
    EXPECT_NE(test::PixelsOf(chart), before);
    chart->SetShowTitle(false);
    EXPECT_EQ(test::PixelsOf(chart), before);
    EXPECT_FALSE(chart->Captions().Title().drawn.IsValid());
}

TEST_F(ChartScreenTest, AnotherTitleTakesTheFirstOnesPlace)
{
    AddChart(200, 39);
    chart->SetShowTitle(true);
    chart->SetTitle("A rather long title");
    chart->SetTitle("i");
    const std::vector<uint32> shown = test::PixelsOf(chart);
    chart->SetTitle("Another long title");
    chart->SetTitle("i");
    EXPECT_EQ(test::PixelsOf(chart), shown);
    ExpectUpToDate();
}

TEST_F(ChartScreenTest, AColumnRunsUnderTheCaptions)
{
    AddChart(60, 39);
    AddSources(*chart, 1);
    chart->SetTitle("MMM");
    chart->SetShowTitle(true);
    chart->SetShowValue(true);
    for (int i = 0; i < 130; i++) {
        Show(*chart, {.memory = i % 3 == 0 ? 1000 : 300, .teams = i});
        ExpectUpToDate();
    }
}

TEST_F(ChartScreenTest, CaptionsThatOverlapEraseNothingOfEachOther)
{
    AddChart(120, 39);
    AddSources(*chart, 1);
    BMessage archive;
    const BMessage caption = SourceArchive(VP_ALLOCATED_TEAMS);
    archive.AddMessage("ValueVP", &caption);
    archive.AddPoint("ValueCoord", BPoint(20, 20));
    archive.AddPoint("TitleCoord", BPoint(30, 24));
    chart->LoadPrefsFrom(&archive);
    chart->SetTitle("Title");
    chart->SetShowTitle(true);
    chart->SetShowValue(true);
    for (int i = 100; i < 120; i++) {
        Show(*chart, {.memory = 0, .teams = i});
        ExpectUpToDate();
    }
}

TEST_F(ChartScreenTest, ACaptionIsHeldInsideTheChart)
{
    AddChart(200, 39);
    chart->SetTitle("Title");
    chart->SetShowTitle(true);
    const float width = chart->Captions().Title().drawn.Width();
    chart->TrackTitle(BPoint(500, 500));
    EXPECT_EQ(chart->Settings().title.where.x, 200 - width - 1);
    EXPECT_EQ(chart->Captions().Title().drawn.bottom, 38);
    chart->TrackTitle(BPoint(-500, -500));
    EXPECT_EQ(chart->Captions().Title().drawn.LeftTop(), BPoint(1, 1));
    chart->TrackTitle(BPoint(500, 20));
    chart->ResizeTo(100, 39);
    EXPECT_EQ(chart->Settings().title.where.x, 100 - width - 1);
    ExpectUpToDate();
}

TEST_F(ChartScreenTest, AnotherFontStaysInsideTheChart)
{
    AddChart(200, 39);
    chart->SetTitle("Title");
    chart->SetShowTitle(true);
    chart->TrackTitle(BPoint(500, 500));
    FFont font(chart->Settings().title.font);
    font.SetSize(24);
    chart->SetTitleFont(&font);
    EXPECT_EQ(chart->Captions().Title().drawn.right, 199);
    EXPECT_EQ(chart->Captions().Title().drawn.bottom, 38);
    ExpectUpToDate();
}

TEST_F(ChartScreenTest, SettingsThatAreDroppedShowAtOnce)
{
    AddChart(200, 39);
    AddSources(*chart, 1);
    for (int i = 0; i < 50; i++)
        Show(*chart, {.memory = 500});
    ChartView other;
    other.SetTitle("Dropped");
    other.SetShowBorder(true);
    other.SetTransparent(false);
    other.SetBackgroundColor({0, 60, 0, 0});
    BMessage settings(MSG_PREFS_DROP);
    other.SavePrefsTo(&settings);
    test::Drop(chart, settings, BPoint(20, 20));
    EXPECT_STREQ(chart->Title(), "Dropped");
    EXPECT_TRUE(chart->Captions().Title().drawn.IsValid());
    EXPECT_EQ(ShownColumn(200), std::string(40, '#'));
    ExpectUpToDate();
}

TEST_F(ChartScreenTest, ASampleTouchesNothingButItsColumn)
{
    AddChart(100, 39);
    AddSources(*chart, 2);
    for (int i = 0; i < 20; i++)
        Show(*chart, {.memory = 500, .teams = 500});
    const std::vector<uint32> before = test::PixelsOf(chart);
    Show(*chart, {.memory = 700, .teams = 700});
    const std::vector<uint32> after = test::PixelsOf(chart);
    ASSERT_EQ(before.size(), after.size());
    for (size_t i = 0; i < before.size(); i++)
        if (i % 101 != 20)
            ASSERT_EQ(before[i], after[i]) << i;
}

TEST_F(ChartWindowTest, SamplesDoNotChangeTheArchive)
{
    // Otherwise the stored settings would be written to the disk every few seconds, for nothing.
    AddChart(60, 40);
    AddSources(*chart, 3);
    chart->SetShowValue(true);
    chart->SetShowTitle(true);
    const auto archived = [this] {
        BMessage archive;
        EXPECT_EQ(chart->Archive(&archive, true), B_OK);
        return archive;
    };
    ::Show(*chart, {100, 200, 300});
    const BMessage before = archived();
    for (int32 i = 0; i < 150; i++) {
        ::Show(*chart, {i % 90, 7 * i % 300, 100});
        ASSERT_TRUE(before.HasSameData(archived())) << i;
    }
    chart->Draw(chart->Bounds());
    EXPECT_TRUE(before.HasSameData(archived()));
    chart->SetBorderColor({1, 2, 3, 255});
    EXPECT_FALSE(before.HasSameData(archived()));
}
