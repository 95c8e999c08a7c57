// SPDX-License-Identifier: MIT
#include "src/chart/ChartViewHolder.h"
#include "tests/src/chart/ChartTestKit.h"

// Charts by keyboard, and what they show when the pointer rests on them.

namespace {

class ChartKeyboardTest : public HolderWindowTest {
protected:
    void SetUp() override
    {
        HolderWindowTest::SetUp();
        AddHolder(BRect(0, 0, 250, 179));
        window->Activate();
        test::Turn();
    }

    /// Returns which charts show that they have the focus.
    std::string Rings() const
    {
        std::string rings;
        for (int32 i = 0; i < holder->CountCharts(); i++) {
            const uint32 ring = PixelWord(ui_color(B_KEYBOARD_NAVIGATION_COLOR)) & 0xFFFFFF;
            rings += (test::PixelOf(holder->ChartAt(i), 250, 30) & 0xFFFFFF) == ring ? 'X' : '.';
        }
        return rings;
    }
};

} // namespace

TEST_F(ChartKeyboardTest, TabWalksTheCharts)
{
    holder->ChartAt(0)->MakeFocus();
    test::Turn();
    EXPECT_EQ(Rings(), "X..");
    test::Key(window, B_TAB);
    test::Turn();
    EXPECT_TRUE(holder->ChartAt(1)->IsFocus());
    EXPECT_EQ(Rings(), ".X.");
    test::Key(window, B_TAB);
    test::Turn();
    EXPECT_EQ(Rings(), "..X");
}

TEST_F(ChartKeyboardTest, SamplesDoNotHideTheFocus)
{
    chart = holder->ChartAt(0);
    AddSources(*chart, 1);
    chart->MakeFocus();
    test::Turn();
    const BMessage sample = SampleMessage({.memory = 1000});
    for (int i = 0; i < 300; i++) {
        clock.now += 1000000;
        window->PostMessage(&sample, chart);
        test::Turn();
    }
    EXPECT_EQ(Rings(), "X..");
}

TEST_F(ChartKeyboardTest, AClickShowsNoRing)
{
    test::Click(holder->ChartAt(1), BPoint(200, 40));
    test::Turn();
    EXPECT_TRUE(holder->ChartAt(1)->IsFocus());
    EXPECT_EQ(Rings(), "...");
    // Until the keyboard is used.
    test::Key(window, 'x');
    test::Turn();
    EXPECT_EQ(Rings(), ".X.");
    test::Key(window, B_TAB);
    test::Turn();
    EXPECT_EQ(Rings(), "..X");
}

TEST_F(ChartKeyboardTest, ThePointerIsToldTheSources)
{
    chart = holder->ChartAt(0);
    AddSources(*chart, 2);
    chart->MouseMoved(BPoint(100, 30), B_ENTERED_VIEW, nullptr);
    EXPECT_NE(std::string(chart->ToolTip()).find("Used memory&nbsp; 0.0 %"), std::string::npos);
    clock.now += 1000000;
    const BMessage sample = SampleMessage({.memory = 250, .teams = 750});
    window->PostMessage(&sample, chart);
    test::Turn();
    const std::string tip = chart->ToolTip();
    EXPECT_NE(tip.find("#6464dc"), std::string::npos);
    EXPECT_NE(tip.find("Used memory&nbsp; 25.0 %"), std::string::npos);
    EXPECT_NE(tip.find("#6c6ce4"), std::string::npos);
    EXPECT_NE(tip.find("Allocated teams&nbsp; 75.0 %"), std::string::npos);
    // Once the pointer is elsewhere, nothing is written.
    chart->MouseMoved(BPoint(500, 30), B_EXITED_VIEW, nullptr);
    clock.now += 1000000;
    const BMessage another = SampleMessage({.memory = 500});
    window->PostMessage(&another, chart);
    test::Turn();
    EXPECT_EQ(chart->ToolTip(), tip);
}
