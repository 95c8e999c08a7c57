// SPDX-License-Identifier: MIT
#include "src/pages/ChartGeneralTab.h"

#include "kits/interface/TextControl.h"
#include "src/support/MessageCodes.h"
#include "tests/src/pages/PageTest.h"

#include <gtest/gtest.h>

namespace {

class ChartGeneralTabTest : public PageTest {
protected:
    void ShowPage()
    {
        fPage = Show(new ChartGeneralTab(chart));
        fMode = FindNth<BMenuField>(fPage);
        fTitle = FindNth<BTextControl>(fPage);
        fPageSize = FindNth<BSlider>(fPage, 0);
        fRefresh = FindNth<BSlider>(fPage, 1);
        fValue = FindNth<BSlider>(fPage, 2);
    }

    BCheckBox* Box(const char* label) const { return Find<BCheckBox>(fPage, label); }
    BMenu* Types() const { return fMode->Menu()->SubmenuAt(0); }
    BMenu* Orientations() const { return fMode->Menu()->SubmenuAt(1); }

    ChartGeneralTab* fPage = nullptr;
    BMenuField* fMode = nullptr;
    BTextControl* fTitle = nullptr;
    BSlider* fPageSize = nullptr;
    BSlider* fRefresh = nullptr;
    BSlider* fValue = nullptr;
};

} // namespace

TEST_F(ChartGeneralTabTest, Controls)
{
    ShowPage();
    EXPECT_STREQ(fPage->Name(), "General");
    EXPECT_STREQ(fMode->Label(), "Mode:");
    EXPECT_STREQ(fTitle->Label(), "Title: ");
    EXPECT_EQ(fTitle->Message()->what, uint32(MSG_TITLE));
    EXPECT_EQ(fTitle->ModificationMessage()->what, uint32(MSG_TITLE));
    EXPECT_EQ(Box("Show Value")->Message()->what, uint32(MSG_SHOW_VALUE));
    EXPECT_EQ(Box("Show Title")->Message()->what, uint32(MSG_SHOW_TITLE));
    EXPECT_EQ(Box("Draw Border")->Message()->what, uint32(MSG_SHOW_BORDER));
    EXPECT_EQ(Box("BgColor = Desktop")->Message()->what, uint32(MSG_LOCK_BG_COLOR));
    EXPECT_EQ(fPageSize->Message()->what, uint32(MSG_PAGE_SIZE));
    EXPECT_EQ(fRefresh->Message()->what, uint32(MSG_REFRESH_SKIP));
    EXPECT_EQ(fValue->Message()->what, uint32(MSG_VALUE_SKIP));
    EXPECT_STREQ(fPageSize->MinLimitLabel(), "0");
    EXPECT_STREQ(fPageSize->MaxLimitLabel(), "Scrolling");
    EXPECT_STREQ(fRefresh->MaxLimitLabel(), "50");
    EXPECT_STREQ(fValue->MaxLimitLabel(), "50");
    int32 low = -1;
    int32 high = 0;
    fPageSize->GetLimits(&low, &high);
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 100);
    fRefresh->GetLimits(&low, &high);
    EXPECT_EQ(high, 50);
    for (const BSlider* slider : {fPageSize, fRefresh, fValue}) {
        EXPECT_EQ(slider->HashMarkCount(), 10);
        EXPECT_EQ(slider->HashMarks(), B_HASH_MARKS_BOTTOM);
        EXPECT_EQ(slider->Style(), B_TRIANGLE_THUMB);
    }
    ASSERT_EQ(fMode->Menu()->CountItems(), 2);
    EXPECT_STREQ(fMode->Menu()->ItemAt(0)->Label(), "Chart");
    EXPECT_STREQ(fMode->Menu()->ItemAt(1)->Label(), "Gauge");
    EXPECT_TRUE(fMode->Menu()->IsRadioMode());
    EXPECT_TRUE(fMode->Menu()->IsLabelFromMarked());
    EXPECT_EQ(Types()->CountItems(), 3);
    EXPECT_EQ(Orientations()->CountItems(), 2);
    EXPECT_TRUE(Types()->IsRadioMode());
    EXPECT_TRUE(Orientations()->IsRadioMode());
}

TEST_F(ChartGeneralTabTest, ShowsTheChart)
{
    chart->SetTitle("My chart");
    chart->SetShowTitle(true);
    chart->SetShowBorder(true);
    chart->SetPageSize(0.5f);
    chart->SetChartType(kPointChart);
    ShowPage();
    EXPECT_STREQ(fTitle->Text(), "My chart");
    EXPECT_EQ(Box("Show Title")->Value(), B_CONTROL_ON);
    EXPECT_EQ(Box("Show Value")->Value(), B_CONTROL_OFF);
    EXPECT_EQ(Box("Draw Border")->Value(), B_CONTROL_ON);
    EXPECT_EQ(Box("BgColor = Desktop")->Value(), B_CONTROL_OFF);
    EXPECT_EQ(fPageSize->Value(), 50);
    EXPECT_STREQ(fPageSize->Label(), "Page size 50 %");
    EXPECT_STREQ(Marked(fMode->Menu()), "Chart");
    EXPECT_STREQ(Marked(Types()), "Point");
}

TEST_F(ChartGeneralTabTest, ShowsAGauge)
{
    chart->SetMode(kGaugeMode);
    chart->SetVertical(true);
    ShowPage();
    EXPECT_STREQ(Marked(fMode->Menu()), "Gauge");
    EXPECT_STREQ(Marked(Orientations()), "Vertical");
    EXPECT_EQ(Types()->FindMarked(), nullptr);
}

TEST_F(ChartGeneralTabTest, PickingAType)
{
    chart->SetMode(kGaugeMode);
    ShowPage();
    Choose(Types()->FindItem("Line"));
    EXPECT_EQ(chart->Settings().mode, kChartMode);
    EXPECT_EQ(chart->Settings().chartType, kLineChart);
    EXPECT_STREQ(Marked(fMode->Menu()), "Chart");
    EXPECT_STREQ(Marked(Types()), "Line");
    Choose(Types()->FindItem("Point"));
    EXPECT_EQ(chart->Settings().chartType, kPointChart);
    Choose(Types()->FindItem("Solid"));
    EXPECT_EQ(chart->Settings().chartType, kSolidChart);
}

TEST_F(ChartGeneralTabTest, PickingAnOrientation)
{
    ShowPage();
    Choose(Orientations()->FindItem("Vertical"));
    EXPECT_EQ(chart->Settings().mode, kGaugeMode);
    EXPECT_TRUE(chart->Settings().vertical);
    EXPECT_STREQ(Marked(fMode->Menu()), "Gauge");
    Choose(Orientations()->FindItem("Horizontal"));
    EXPECT_FALSE(chart->Settings().vertical);
}

TEST_F(ChartGeneralTabTest, PickingAModeItselfKeepsTypeAndOrientation)
{
    chart->SetChartType(kLineChart);
    chart->SetVertical(true);
    ShowPage();
    Choose(fMode->Menu()->ItemAt(1));
    EXPECT_EQ(chart->Settings().mode, kGaugeMode);
    EXPECT_TRUE(chart->Settings().vertical);
    Choose(fMode->Menu()->ItemAt(0));
    EXPECT_EQ(chart->Settings().mode, kChartMode);
    EXPECT_EQ(chart->Settings().chartType, kLineChart);
}

TEST_F(ChartGeneralTabTest, PageSize)
{
    ShowPage();
    Use(fPageSize, 30);
    EXPECT_EQ(chart->Settings().pageSize, 0.3f);
    // Spelled differently than when the page opens.
    EXPECT_STREQ(fPageSize->Label(), "PageSize 30 %");
    Use(fPageSize, 100);
    EXPECT_EQ(chart->Settings().pageSize, 1.0f);
    EXPECT_STREQ(fPageSize->Label(), "PageSize 100 %");
    Use(fPageSize, 0);
    EXPECT_EQ(chart->Settings().pageSize, 0.0f);
    fPage->GetState();
    EXPECT_STREQ(fPageSize->Label(), "Page size 0 %");
}

TEST_F(ChartGeneralTabTest, RefreshSkipAndItsLabels)
{
    ShowPage();
    const std::pair<int32, const char*> expected[] = {
        {0, "Refresh at every sysinfo sample"},       {1, "Refresh at every 2nd sysinfo sample"},
        {2, "Refresh at every 3rd sysinfo sample"},   {3, "Refresh at every 4th sysinfo sample"},
        {20, "Refresh at every 21th sysinfo sample"}, {50, "Refresh at every 51th sysinfo sample"},
    };
    for (const auto& [value, label] : expected) {
        Use(fRefresh, value);
        EXPECT_EQ(chart->Settings().skip, value);
        EXPECT_STREQ(fRefresh->Label(), label);
    }
}

TEST_F(ChartGeneralTabTest, ValueSkipAndItsLabels)
{
    ShowPage();
    const std::pair<int32, const char*> expected[] = {
        {0, "Draw value at every refresh"},       {1, "Draw value at every 2nd refresh"},
        {2, "Draw value at every 3rd refresh"},   {3, "Draw value at every 4th refresh"},
        {50, "Draw value at every 51th refresh"},
    };
    for (const auto& [value, label] : expected) {
        Use(fValue, value);
        EXPECT_EQ(chart->Settings().valueSkip, value);
        EXPECT_STREQ(fValue->Label(), label);
    }
}

TEST_F(ChartGeneralTabTest, EveryStepOfASkipIsReachedExactly)
{
    ShowPage();
    for (int32 value = 0; value <= 50; value++) {
        fRefresh->SetValue(value);
        BMessage message(MSG_REFRESH_SKIP);
        fPage->MessageReceived(&message);
        EXPECT_EQ(chart->Settings().skip, value);
    }
}

TEST_F(ChartGeneralTabTest, OpeningItRaisesBothSkipsByOne)
{
    chart->SetSkipValue(0);
    chart->SetValueSkipValue(7);
    ShowPage();
    EXPECT_EQ(chart->Settings().skip, 1);
    EXPECT_STREQ(fRefresh->Label(), "Refresh at every 2nd sysinfo sample");
    EXPECT_EQ(chart->Settings().valueSkip, 8);
}

TEST_F(ChartGeneralTabTest, TheLargestSkipStays)
{
    chart->SetSkipValue(50);
    ShowPage();
    EXPECT_EQ(chart->Settings().skip, 50);
}

TEST_F(ChartGeneralTabTest, CheckBoxes)
{
    ShowPage();
    Use(Box("Show Value"), B_CONTROL_ON);
    EXPECT_TRUE(chart->Settings().value.shown);
    Use(Box("Show Title"), B_CONTROL_ON);
    EXPECT_TRUE(chart->Settings().title.shown);
    Use(Box("Draw Border"), B_CONTROL_ON);
    EXPECT_TRUE(chart->Settings().showBorder);
    Use(Box("BgColor = Desktop"), B_CONTROL_ON);
    EXPECT_TRUE(chart->Settings().lockBgColor);
    Use(Box("Show Value"), B_CONTROL_OFF);
    EXPECT_FALSE(chart->Settings().value.shown);
    Use(Box("BgColor = Desktop"), B_CONTROL_OFF);
    EXPECT_FALSE(chart->Settings().lockBgColor);
}

TEST_F(ChartGeneralTabTest, EveryKeystrokeRenamesTheChart)
{
    ShowPage();
    fTitle->MakeFocus(true);
    test::Turn();
    test::Key(prefs, B_END);
    for (char key : {'x', 'y'})
        test::Key(prefs, key);
    test::Turn();
    EXPECT_STREQ(chart->Title(), fTitle->Text());
    EXPECT_NE(std::strstr(chart->Title(), "xy"), nullptr);
}

TEST_F(ChartGeneralTabTest, RevertPutsTheChartBack)
{
    chart->SetTitle("before");
    const BMessage before = ChartSettings();
    ShowPage();
    Use(fPageSize, 10);
    Use(Box("Draw Border"), B_CONTROL_ON);
    Choose(Orientations()->FindItem("Vertical"));
    chart->SetTitle("after");
    fPage->Revert();
    EXPECT_TRUE(ChartSettings().HasSameData(before));
}

TEST_F(ChartGeneralTabTest, TheButtonThenRaisesTheSkipsAgain)
{
    chart->SetSkipValue(4);
    ShowPage();
    EXPECT_EQ(chart->Settings().skip, 5);
    Use(fRefresh, 30);
    Post(MSG_PREFS_REVERT);
    EXPECT_EQ(chart->Settings().skip, 5);
    EXPECT_EQ(fRefresh->Value(), 5);
}

TEST_F(ChartGeneralTabTest, ADragCarriesTheGeneralSettings)
{
    ShowPage();
    chart->SetTitle("dragged");
    BMessage message;
    EXPECT_TRUE(fPage->SavePrefsForDD(&message));
    BMessage expected(MSG_PREFS_DROP);
    chart->SaveGeneralPrefsTo(&expected);
    EXPECT_TRUE(message.HasSameData(expected));
}

TEST_F(ChartGeneralTabTest, Layout)
{
    ShowPage();
    for (const BPoint size : {BPoint(440, 330), BPoint(777, 555)}) {
        prefs->ResizeTo(size.x, size.y);
        test::Turn();
        const float width = fPage->Bounds().Width();
        const float height = fPage->Bounds().Height();

        float gap = (height - 4 * Box("Show Value")->Bounds().Height()) / 5;
        float y = gap;
        for (const char* label : {"Show Value", "Show Title", "Draw Border", "BgColor = Desktop"}) {
            EXPECT_NEAR(Box(label)->Frame().left, width * 0.02f, 0.001) << label;
            EXPECT_NEAR(Box(label)->Frame().top, y, 0.001) << label;
            y += Box(label)->Bounds().Height() + gap;
        }

        BView* const right[] = {fMode, fTitle, fPageSize, fRefresh, fValue};
        gap = height;
        for (const BView* view : right)
            gap -= view->Bounds().Height();
        gap /= 7;
        EXPECT_GT(gap, 0);
        y = gap;
        for (const BView* view : right) {
            EXPECT_NEAR(view->Frame().left, width * 0.32f, 0.001);
            EXPECT_NEAR(view->Frame().top, y, 0.001);
            EXPECT_NEAR(view->Bounds().Width(), width * 0.66f, 0.001);
            y += view->Bounds().Height() + gap;
        }
        EXPECT_NEAR(fMode->Divider(), width * 0.66f / 2.7f, 0.001);
        EXPECT_NEAR(fTitle->Divider(), width * 0.66f / 2.7f, 0.001);
    }
}

TEST_F(ChartGeneralTabTest, AChartThatIsGoneIsNotTouched)
{
    ShowPage();
    const BMessage before = ChartSettings();
    fPage->ForgetModel();
    Use(fPageSize, 10);
    Use(Box("Draw Border"), B_CONTROL_ON);
    Choose(Types()->FindItem("Line"));
    fPage->Revert();
    fPage->GetState();
    BMessage message;
    EXPECT_FALSE(fPage->SavePrefsForDD(&message));
    EXPECT_TRUE(message.IsEmpty());
    EXPECT_TRUE(ChartSettings().HasSameData(before));
}
