// SPDX-License-Identifier: MIT
#include "src/chart/ChartViewHolder.h"
#include "tests/src/chart/ChartTestKit.h"

// Dragging captions with the mouse.

namespace {

class ChartTrackingTest : public HolderWindowTest {
protected:
    void SetUp() override
    {
        HolderWindowTest::SetUp();
        AddHolder(BRect(0, 0, 250, 179));
        chart = holder->ChartAt(0);
        chart->SetTitle("Title");
        chart->TrackTitle(BPoint(20, 20));
        AddSources(*chart, 1);
        Show(*chart, {.memory = 500});
        chart->TrackValue(BPoint(120, 30));
        test::Turn();
        onTitle = BPoint(chart->Captions().Title().drawn.left + 3, chart->Captions().Title().drawn.top + 3);
        onValue = BPoint(chart->Captions().Value().drawn.left + 3, chart->Captions().Value().drawn.top + 3);
    }

    BPoint onTitle;
    BPoint onValue;
};

} // namespace

TEST_F(ChartTrackingTest, TheTitleFollowsTheMouse)
{
    test::Press(chart, onTitle);
    test::MoveTo(chart, BPoint(90, 40));
    EXPECT_TRUE(test::WaitFor([&] { return chart->Settings().title.where == BPoint(90, 40); }));
    test::MoveTo(chart, BPoint(60, 35));
    EXPECT_TRUE(test::WaitFor([&] { return chart->Settings().title.where == BPoint(60, 35); }));
    test::Release(chart, BPoint(60, 35));
    EXPECT_EQ(chart->Settings().value.where, BPoint(120, 30));
}

TEST_F(ChartTrackingTest, TheValueFollowsTheMouseWithinTheChart)
{
    test::Press(chart, onValue);
    test::MoveTo(chart, BPoint(-40, 400));
    EXPECT_TRUE(test::WaitFor([&] { return chart->Settings().value.where.x == 1; }));
    EXPECT_EQ(chart->Captions().Value().drawn.bottom, chart->Bounds().bottom - 1);
    test::Release(chart, BPoint(-40, 400));
}

TEST_F(ChartTrackingTest, AHiddenCaptionIsNotDragged)
{
    chart->SetShowTitle(false);
    const BPoint before = chart->Settings().title.where;
    test::Press(chart, onTitle);
    test::MoveTo(chart, BPoint(90, 40));
    test::Release(chart, BPoint(90, 40));
    test::Turn();
    EXPECT_EQ(chart->Settings().title.where, before);
}

TEST_F(ChartTrackingTest, ACaptionDraggedOverTheOtherHarmsNeither)
{
    for (float x = 20; x < 200; x += 7) {
        chart->TrackTitle(BPoint(x, 31));
        const std::vector<uint32> shown = test::PixelsOf(chart);
        chart->Draw(chart->Bounds());
        EXPECT_EQ(test::PixelsOf(chart) == shown, true) << x;
    }
    chart->DoneTracking();
}

TEST_F(ChartTrackingTest, DraggingRedrawsOnlyAroundTheCaption)
{
    const BRect before = chart->Captions().Title().drawn;
    const std::vector<uint32> shown = test::PixelsOf(chart);
    chart->TrackTitle(BPoint(30, 22));
    const std::vector<uint32> after = test::PixelsOf(chart);
    const BRect touched = before | chart->Captions().Title().drawn;
    const auto columns = static_cast<size_t>(chart->Bounds().right) + 1;
    for (size_t i = 0; i < shown.size(); i++) {
        const BPoint pixel(static_cast<float>(i % columns), static_cast<float>(i / columns));
        if (!touched.Contains(pixel))
            ASSERT_EQ(shown[i], after[i]) << pixel.x << ", " << pixel.y;
    }
}

TEST_F(ChartTrackingTest, TheOtherChartsGoOnMeanwhile)
{
    ChartView* other = holder->ChartAt(2);
    AddSources(*other, 1);
    test::Press(chart, onTitle);
    test::MoveTo(chart, BPoint(90, 40));
    EXPECT_TRUE(test::WaitFor([&] { return chart->Settings().title.where == BPoint(90, 40); }));
    clock.now += 1000000;
    const BMessage sample = SampleMessage({.memory = 500});
    window->PostMessage(&sample, other);
    EXPECT_TRUE(test::WaitFor([&] { return other->Picture().Column() == kColumnZeroDrawn; }));
    test::Release(chart, BPoint(90, 40));
}

TEST_F(ChartTrackingTest, TheChartMayGoMeanwhile)
{
    test::Press(chart, onTitle);
    test::MoveTo(chart, BPoint(90, 40));
    EXPECT_TRUE(test::WaitFor([&] { return chart->Settings().title.where == BPoint(90, 40); }));
    window->PostMessage(MSG_CHART_DELETE, chart);
    EXPECT_TRUE(test::WaitFor([&] { return holder->CountCharts() == 2; }));
    test::MoveTo(holder, BPoint(90, 41));
    test::Turn();
    test::Release(holder, BPoint(90, 41));
}

TEST_F(ChartTrackingTest, TheWindowMayGoMeanwhile)
{
    test::Press(chart, onTitle);
    test::MoveTo(chart, BPoint(90, 40));
    EXPECT_TRUE(test::WaitFor([&] { return chart->Settings().title.where == BPoint(90, 40); }));
    window->Quit();
    window = nullptr;
    test::Turn();
}
