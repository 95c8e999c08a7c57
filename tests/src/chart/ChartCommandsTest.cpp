// SPDX-License-Identifier: MIT
#include "src/chart/ChartViewHolder.h"
#include "tests/src/chart/ChartTestKit.h"

#include <cmath>

// Messages between charts, sent through their holder, and what a chart accepts of them.

namespace {

class ChartCommandsTest : public HolderWindowTest {
protected:
    void SetUp() override
    {
        HolderWindowTest::SetUp();
        AddHolder(BRect(0, 0, 100, 119));
        test::Turn();
        for (int32 i = 0; i < 3; i++)
            AddSources(*holder->ChartAt(i), 1);
        chart = holder->ChartAt(1);
    }

    static void Send(ChartView* to, BMessage message) { to->MessageReceived(&message); }

    static BMessage ColumnMessage(float column)
    {
        BMessage message(MSG_SET_COLUMN);
        message.AddFloat("Pos", column);
        return message;
    }

    static BMessage PlaceMessage(uint32 what, BPoint where)
    {
        BMessage message(what);
        message.AddPoint("Coord", where);
        return message;
    }
};

void ShowStairs(ChartView& chart, int count)
{
    for (int i = 0; i < count; i++)
        Show(chart, {.memory = (i + 1) * 40});
}

} // namespace

TEST_F(ChartCommandsTest, SynchronizingGivesTheOthersThisChartsColumn)
{
    ShowStairs(*chart, 11);
    ShowStairs(*holder->ChartAt(0), 3);
    ShowStairs(*holder->ChartAt(2), 20);
    EXPECT_EQ(chart->Picture().Column(), 10);
    Send(chart, BMessage(MSG_SYNC_OTHERS));
    test::Turn();
    // Their next sample goes to the column of this chart's newest.
    EXPECT_EQ(holder->ChartAt(0)->Picture().Column(), 9);
    EXPECT_EQ(holder->ChartAt(2)->Picture().Column(), 9);
    EXPECT_EQ(chart->Picture().Column(), 10);
}

TEST_F(ChartCommandsTest, DistributingGivesTheOthersACaptionsPlace)
{
    for (int32 i = 0; i < 3; i++)
        holder->ChartAt(i)->SetTitle("x");
    chart->TrackTitle(BPoint(33, 22));
    chart->TrackValue(BPoint(44, 25));
    Send(chart, BMessage(MSG_DISTRIBUTE_TITLE_POS));
    Send(chart, BMessage(MSG_DISTRIBUTE_VALUE_POS));
    test::Turn();
    for (int32 i = 0; i < 3; i++) {
        EXPECT_EQ(holder->ChartAt(i)->Settings().title.where, BPoint(33, 22));
        EXPECT_EQ(holder->ChartAt(i)->Settings().value.where, BPoint(44, 25));
    }
}

TEST_F(ChartCommandsTest, APlaceIsHeldInsideTheChart)
{
    chart->SetTitle("x");
    Send(chart, PlaceMessage(MSG_SET_TITLE_POS, BPoint(5000, 5000)));
    EXPECT_EQ(chart->Captions().Title().drawn.right, chart->Bounds().right - 1);
    EXPECT_EQ(chart->Captions().Title().drawn.bottom, chart->Bounds().bottom - 1);
    Send(chart, PlaceMessage(MSG_SET_VALUE_POS, BPoint(-5000, -5000)));
    EXPECT_EQ(chart->Settings().value.where.x, 1);
}

TEST_F(ChartCommandsTest, PlacesThatAreNoneChangeNothing)
{
    const BPoint title = chart->Settings().title.where;
    const BPoint value = chart->Settings().value.where;
    for (uint32 what : {MSG_SET_TITLE_POS, MSG_SET_VALUE_POS}) {
        Send(chart, BMessage(what));
        BMessage wrong(what);
        wrong.AddString("Coord", "x");
        Send(chart, wrong);
        for (float coordinate : {NAN, INFINITY, -INFINITY, 1e9f})
            Send(chart, PlaceMessage(what, BPoint(coordinate, 1)));
    }
    EXPECT_EQ(chart->Settings().title.where, title);
    EXPECT_EQ(chart->Settings().value.where, value);
}

TEST_F(ChartCommandsTest, MovesThePictureRight)
{
    ShowStairs(*chart, 4);
    const std::vector<int> before = Heights(*chart);
    Send(chart, ColumnMessage(10));
    EXPECT_EQ(chart->Picture().Column(), 9);
    std::vector<int> expected(before.size(), 0);
    std::copy(before.begin(), before.begin() + 4, expected.begin() + 7);
    EXPECT_EQ(Heights(*chart), expected);
    Show(*chart, {.memory = 0});
    EXPECT_EQ(chart->Picture().Column(), 10);
    EXPECT_EQ(Heights(*chart)[10], 1 + (before[3] - 1));
}

TEST_F(ChartCommandsTest, MovesThePictureLeft)
{
    ShowStairs(*chart, 20);
    const std::vector<int> before = Heights(*chart);
    Send(chart, ColumnMessage(5));
    EXPECT_EQ(chart->Picture().Column(), 4);
    std::vector<int> expected(before.size(), 0);
    std::copy(before.begin() + 14, before.begin() + 20, expected.begin());
    EXPECT_EQ(Heights(*chart), expected);
}

TEST_F(ChartCommandsTest, MovingKeepsInsideTheBorder)
{
    chart->SetShowBorder(true);
    ShowStairs(*chart, 20);
    Send(chart, ColumnMessage(40));
    Send(chart, ColumnMessage(5));
    Send(chart, ColumnMessage(99));
    const std::vector<int> heights = Heights(*chart);
    EXPECT_EQ(heights.back(), 0);
    test::Turn();
    EXPECT_EQ(Shown(100, 20), Word(chart->Settings().borderColor));
}

TEST_F(ChartCommandsTest, WhatMovesInIsClearedWithTheLowColour)
{
    chart->SetBackgroundColor({1, 2, 3, 4});
    ShowStairs(*chart, 4);
    Send(chart, ColumnMessage(50));
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(0, 0), 0x04010203u);
    chart->SetTransparent(true);
    Send(chart, ColumnMessage(80));
    EXPECT_EQ(PixelRows(chart->Picture().Bitmap()).At(0, 0), B_TRANSPARENT_MAGIC_RGBA32);
}

TEST_F(ChartCommandsTest, ALineGoesOnFromItsNewPlace)
{
    chart->SetChartType(kLineChart);
    for (int i = 0; i < 5; i++)
        Show(*chart, {.memory = 500});
    Send(chart, ColumnMessage(30));
    Show(*chart, {.memory = 500});
    EXPECT_EQ(chart->Picture().Column(), 30);
    const std::vector<int> heights = Heights(*chart);
    EXPECT_EQ(std::count(heights.begin(), heights.end(), 1), 5);
}

TEST_F(ChartCommandsTest, TheNextSampleGoesToTheColumnThatWasGiven)
{
    for (float column : {0.0f, 1.0f, 2.0f, 57.0f, 100.0f}) {
        ShowStairs(*chart, 7);
        Send(chart, ColumnMessage(column));
        Show(*chart, {.memory = 0});
        EXPECT_EQ(std::floor(chart->Picture().Column()), column);
    }
    // A chart that has drawn column zero only marks that in its message.
    Send(chart, ColumnMessage(kColumnZeroDrawn));
    Show(*chart, {.memory = 0});
    EXPECT_EQ(std::floor(chart->Picture().Column()), 0);
}

TEST_F(ChartCommandsTest, ColumnsThatAreNoneChangeNothing)
{
    ShowStairs(*chart, 7);
    const std::vector<int> before = Heights(*chart);
    Send(chart, BMessage(MSG_SET_COLUMN));
    BMessage wrong(MSG_SET_COLUMN);
    wrong.AddInt32("Pos", 5);
    Send(chart, wrong);
    for (float column : {NAN, INFINITY, -INFINITY, -1.0f, 1e9f, 150.0f})
        Send(chart, ColumnMessage(column));
    EXPECT_EQ(Heights(*chart), before);
    EXPECT_EQ(chart->Picture().Column(), 6);
    chart->SetMode(kGaugeMode);
    Send(chart, ColumnMessage(50));
    chart->SetMode(kChartMode);
    EXPECT_EQ(chart->Picture().Column(), 0);
}

TEST_F(ChartCommandsTest, AboutGoesToTheApplication)
{
    test::Turn();
    application->received.clear();
    Send(chart, BMessage(B_ABOUT_REQUESTED));
    test::Turn();
    ASSERT_EQ(application->received.size(), 1u);
    EXPECT_EQ(application->received[0].what, static_cast<uint32>(B_ABOUT_REQUESTED));
}

TEST_F(ChartCommandsTest, EveryMessageMayComeEmptyOrWrong)
{
    for (uint32 what = MSG_SYSINFO_SAMPLE; what <= MSG_REMOVE_SOURCE; what++) {
        if (what == MSG_CHART_DELETE || what == MSG_CHART_ADD)
            continue;
        BMessage message(what);
        Send(chart, message);
        for (const char* name : {"Sysinfo*", "si:Body", "sn:Body", "ValueProvider", "Coord", "Pos", "Container",
                                 "Archive", "source", "Title", "CView", "Msg", "font", "RGBColor", "text/plain"})
            message.AddBool(name, true);
        Send(chart, message);
        test::Turn();
    }
    EXPECT_EQ(holder->CountCharts(), 3);
}

TEST_F(ChartCommandsTest, AHundredChartsTakeASampleEach)
{
    for (int i = 0; i < 97; i++)
        holder->AddChartView(new ChartView());
    holder->Rerender();
    for (int32 i = 0; i < 100; i++) {
        AddSources(*holder->ChartAt(i), 1);
        Show(*holder->ChartAt(i), {.memory = 500});
    }
    test::Turn();
    EXPECT_EQ(holder->ChartAt(99)->Frame().bottom, holder->Bounds().bottom);
}
