// SPDX-License-Identifier: MIT
#include "src/chart/ChartViewHolder.h"
#include "src/support/ui/SmartWindow.h"
#include "tests/src/chart/ChartTestKit.h"

#include <cmath>

// A chart and its preferences window.

namespace {

class ChartPrefsTest : public HolderWindowTest {
protected:
    void SetUp() override
    {
        HolderWindowTest::SetUp();
        AddHolder(BRect(0, 0, 250, 179));
        chart = holder->ChartAt(0);
        test::Turn();
    }

    void Open()
    {
        window->PostMessage(MSG_CHART_PREFS, chart);
        test::Turn();
        ASSERT_NE(chart->PreferencesWindow(), nullptr);
    }

    BMessage WindowArchive() const
    {
        BMessage settings;
        BMessage archive;
        chart->SaveGeneralPrefsTo(&settings);
        settings.FindMessage("PrefsWindowArchive", &archive);
        return archive;
    }
};

} // namespace

TEST_F(ChartPrefsTest, OpensOneWindow)
{
    Open();
    SmartWindow* prefs = chart->PreferencesWindow();
    EXPECT_STREQ(prefs->Title(), "Chart preferences");
    EXPECT_FALSE(prefs->IsHidden());
    EXPECT_EQ(prefs->Frame().LeftTop(), BPoint(50, 50));
    float minWidth = 0;
    float maxWidth = 0;
    float minHeight = 0;
    float maxHeight = 0;
    prefs->GetSizeLimits(&minWidth, &maxWidth, &minHeight, &maxHeight);
    EXPECT_GE(minWidth, 440);
    EXPECT_GE(minHeight, 280);
    window->PostMessage(MSG_CHART_PREFS, chart);
    test::Turn();
    EXPECT_EQ(chart->PreferencesWindow(), prefs);
}

TEST_F(ChartPrefsTest, TheWindowComesBackWhereItWas)
{
    Open();
    chart->PreferencesWindow()->MoveTo(81, 92);
    chart->PreferencesWindow()->ResizeTo(777, 666);
    chart->PreferencesWindow()->PostMessage(B_QUIT_REQUESTED);
    test::Turn();
    EXPECT_EQ(chart->PreferencesWindow(), nullptr);
    EXPECT_FALSE(WindowArchive().IsEmpty());
    Open();
    EXPECT_EQ(chart->PreferencesWindow()->Frame(), BRect(81, 92, 81 + 777, 92 + 666));
}

TEST_F(ChartPrefsTest, AnOpenWindowIsAskedWhereItIs)
{
    Open();
    chart->PreferencesWindow()->MoveTo(123, 45);
    BRect frame;
    EXPECT_EQ(WindowArchive().FindRect("_frame", &frame), B_OK);
    EXPECT_EQ(frame.LeftTop(), BPoint(123, 45));
}

TEST_F(ChartPrefsTest, TheWindowGoesWithItsChart)
{
    Open();
    const BMessenger prefs(chart->PreferencesWindow());
    window->PostMessage(MSG_CHART_DELETE, chart);
    test::Turn();
    EXPECT_EQ(holder->CountCharts(), 2);
    EXPECT_FALSE(prefs.IsValid());
}

TEST_F(ChartPrefsTest, TheWindowGoesWithTheMainWindow)
{
    Open();
    const BMessenger prefs(chart->PreferencesWindow());
    window->Quit();
    window = nullptr;
    test::Turn();
    EXPECT_FALSE(prefs.IsValid());
}

TEST_F(ChartPrefsTest, EachChartHasItsOwn)
{
    Open();
    SmartWindow* first = chart->PreferencesWindow();
    window->PostMessage(MSG_CHART_PREFS, holder->ChartAt(1));
    test::Turn();
    SmartWindow* second = holder->ChartAt(1)->PreferencesWindow();
    ASSERT_NE(second, nullptr);
    EXPECT_NE(second, first);
    window->PostMessage(MSG_CHART_DELETE, holder->ChartAt(1));
    test::Turn();
    EXPECT_EQ(chart->PreferencesWindow(), first);
}

TEST_F(ChartPrefsTest, WindowsThatAreNotItsOwnTellItNothing)
{
    BMessage closed(MSG_WINDOW_CLOSED);
    BMessage archive;
    archive.AddInt32("x", 1);
    closed.AddMessage("Archive", &archive);
    chart->MessageReceived(&closed);
    closed.AddPointer("Container", holder);
    chart->MessageReceived(&closed);
    EXPECT_TRUE(WindowArchive().IsEmpty());
}

TEST_F(ChartPrefsTest, AnArchiveThatIsNoWindowsStillOpensOne)
{
    BMessage settings;
    BMessage archive;
    archive.AddRect("_frame", BRect(NAN, 1e30f, -5, 7));
    archive.AddString("_title", "");
    settings.AddMessage("PrefsWindowArchive", &archive);
    chart->LoadPrefsFrom(&settings);
    Open();
    EXPECT_GE(chart->PreferencesWindow()->Frame().Width(), 440);
}
