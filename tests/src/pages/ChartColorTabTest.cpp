// SPDX-License-Identifier: MIT
#include "src/pages/ChartColorTab.h"

#include "kits/interface/Button.h"
#include "kits/interface/Screen.h"
#include "src/support/MessageCodes.h"
#include "src/support/ui/ColorPreView.h"
#include "src/support/ui/SmartColorControl.h"
#include "tests/src/pages/PageTest.h"

#include <gtest/gtest.h>

namespace {

constexpr rgb_color kRed{200, 10, 20, 255};
/// The colour of a desktop about which nothing is known.
constexpr rgb_color kDesktop{51, 102, 152, 255};

class ChartColorTabTest : public PageTest {
protected:
    void SetUp() override
    {
        PageTest::SetUp();
        chart->SetShowValue(true);
        chart->SetShowTitle(true);
    }

    void TearDown() override
    {
        PageTest::TearDown();
        BScreen().RestoreDesktop();
    }

    void ShowPage()
    {
        fPage = Show(new ChartColorTab(chart));
        fColors = FindNth<SmartColorControl>(fPage);
        fPreview = FindNth<ColorPreView>(fPage);
        fPick = FindNth<BButton>(fPage);
        fTarget = Find<BMenuField>(fPage, "Target:");
        fAATarget = Find<BMenuField>(fPage, "AA target:");
        fTest = Find<BCheckBox>(fPage, "Test on Desktop");
        fTransparent = Find<BCheckBox>(fPage, "Transparent background");
        fAA = FindNth<BSlider>(fPage);
    }

    void ChooseTarget(const char* label) { Choose(Item(fTarget, label)); }

    void PickColor(rgb_color color)
    {
        fColors->SetValue(color);
        fColors->Invoke();
        test::Turn();
    }

    void PressPick(bigtime_t after)
    {
        clock.now += after;
        fPick->Invoke();
        test::Turn();
    }

    ChartColorTab* fPage = nullptr;
    SmartColorControl* fColors = nullptr;
    ColorPreView* fPreview = nullptr;
    BButton* fPick = nullptr;
    BMenuField* fTarget = nullptr;
    BMenuField* fAATarget = nullptr;
    BCheckBox* fTest = nullptr;
    BCheckBox* fTransparent = nullptr;
    BSlider* fAA = nullptr;
};

bool SameRGB(rgb_color a, rgb_color b)
{
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

} // namespace

TEST_F(ChartColorTabTest, Controls)
{
    ShowPage();
    EXPECT_STREQ(fPage->Name(), "Colors");
    const std::pair<const char*, uint32> targets[] = {
        {"< none >", MSG_TARGET_NONE}, {"Chart", MSG_TARGET_CHART}, {"Background", MSG_TARGET_BACKGROUND},
        {"Border", MSG_TARGET_BORDER}, {"Value", MSG_TARGET_VALUE}, {"Title", MSG_TARGET_TITLE},
    };
    ASSERT_EQ(fTarget->Menu()->CountItems(), 6);
    for (int32 i = 0; i < 6; i++) {
        EXPECT_STREQ(fTarget->Menu()->ItemAt(i)->Label(), targets[i].first);
        EXPECT_EQ(fTarget->Menu()->ItemAt(i)->Message()->what, targets[i].second);
    }
    EXPECT_STREQ(Marked(fTarget->Menu()), "< none >");
    const std::pair<const char*, uint32> aaTargets[] = {
        {"Chart", MSG_AA_TARGET_CHART}, {"Background", MSG_AA_TARGET_BACKGROUND}, {"Average", MSG_AA_TARGET_AVERAGE}};
    ASSERT_EQ(fAATarget->Menu()->CountItems(), 3);
    for (int32 i = 0; i < 3; i++) {
        EXPECT_STREQ(fAATarget->Menu()->ItemAt(i)->Label(), aaTargets[i].first);
        EXPECT_EQ(fAATarget->Menu()->ItemAt(i)->Message()->what, aaTargets[i].second);
    }
    EXPECT_STREQ(Marked(fAATarget->Menu()), "Average");
    EXPECT_FALSE(fAATarget->Menu()->IsEnabled());
    EXPECT_FALSE(fAA->IsEnabled());
    EXPECT_STREQ(fAA->Label(), "Antialiasing (%)");
    EXPECT_STREQ(fAA->MinLimitLabel(), "Off");
    EXPECT_STREQ(fAA->MaxLimitLabel(), "Full");
    EXPECT_EQ(fAA->HashMarkCount(), 10);
    EXPECT_EQ(fPick->Message()->what, uint32(MSG_PICK_DESKTOP));
    EXPECT_STREQ(fPick->Label(), "Pick Desktop");
    EXPECT_EQ(fTest->Message()->what, uint32(MSG_TEST_ON_DESKTOP));
    EXPECT_EQ(fTransparent->Message()->what, uint32(MSG_TRANSPARENT));
    EXPECT_EQ(fColors->Message()->what, uint32(MSG_COLOR_CHANGED));
}

TEST_F(ChartColorTabTest, WithoutATargetNothingOfTheChartChanges)
{
    ShowPage();
    const BMessage before = ChartSettings();
    PickColor(kRed);
    EXPECT_TRUE(ChartSettings().HasSameData(before));
    EXPECT_EQ(fPreview->ViewColor(), kRed);
    ChooseTarget("Chart");
    EXPECT_TRUE(SameRGB(fColors->ValueAsColor(), chart->ChartColor(0)));
    // With no target, the page kept the picked colour.
    ChooseTarget("< none >");
    EXPECT_EQ(fColors->ValueAsColor(), kRed);
}

TEST_F(ChartColorTabTest, EachTargetHasItsColor)
{
    ShowPage();
    const std::pair<const char*, rgb_color (*)(const ChartView&)> targets[] = {
        {"Chart", [](const ChartView& view) { return view.ChartColor(0); }},
        {"Background", [](const ChartView& view) { return view.Settings().backgroundColor; }},
        {"Border", [](const ChartView& view) { return view.Settings().borderColor; }},
        {"Value", [](const ChartView& view) { return view.Settings().value.color; }},
        {"Title", [](const ChartView& view) { return view.Settings().title.color; }},
    };
    uint8 number = 0;
    for (const auto& [label, color] : targets) {
        ChooseTarget(label);
        EXPECT_TRUE(SameRGB(fColors->ValueAsColor(), color(*chart))) << label;
        EXPECT_TRUE(SameRGB(fPreview->ViewColor(), color(*chart))) << label;
        number += 20;
        const rgb_color picked{number, 7, 9, 255};
        PickColor(picked);
        EXPECT_EQ(color(*chart), picked) << label;
        EXPECT_EQ(fPreview->ViewColor(), picked) << label;
    }
    number = 0;
    for (const auto& [label, color] : targets) {
        number += 20;
        EXPECT_EQ(color(*chart), (rgb_color{number, 7, 9, 255})) << label;
    }
}

TEST_F(ChartColorTabTest, OnlyTextsAreAntialiased)
{
    chart->SetTitleAAValue(0.5f);
    chart->SetTitleAATarget(2);
    chart->SetValueAAValue(0.75f);
    chart->SetValueAATarget(1);
    ShowPage();
    ChooseTarget("Title");
    EXPECT_TRUE(fAA->IsEnabled());
    EXPECT_TRUE(fAATarget->Menu()->IsEnabled());
    EXPECT_EQ(fAA->Value(), 50);
    EXPECT_STREQ(fAA->Label(), "Antialiasing 50 %");
    EXPECT_STREQ(Marked(fAATarget->Menu()), "Background");
    ChooseTarget("Border");
    EXPECT_FALSE(fAA->IsEnabled());
    EXPECT_FALSE(fAATarget->Menu()->IsEnabled());
    ChooseTarget("Value");
    EXPECT_TRUE(fAA->IsEnabled());
    EXPECT_EQ(fAA->Value(), 75);
    EXPECT_STREQ(fAA->Label(), "Antialiasing 75 %");
    EXPECT_STREQ(Marked(fAATarget->Menu()), "Chart");
    ChooseTarget("Chart");
    EXPECT_FALSE(fAA->IsEnabled());
}

TEST_F(ChartColorTabTest, AntialiasingOfTheTarget)
{
    ShowPage();
    ChooseTarget("Value");
    Use(fAA, 40);
    EXPECT_EQ(chart->Settings().value.aaValue, 0.4f);
    EXPECT_EQ(chart->Settings().title.aaValue, 0.25f);
    EXPECT_STREQ(fAA->Label(), "Antialiasing 40 %");
    Choose(Item(fAATarget, "Background"));
    EXPECT_EQ(chart->Settings().value.aaTarget, 2);
    EXPECT_EQ(chart->Settings().title.aaTarget, 3);
    ChooseTarget("Title");
    Use(fAA, 100);
    EXPECT_EQ(chart->Settings().title.aaValue, 1.0f);
    Choose(Item(fAATarget, "Chart"));
    EXPECT_EQ(chart->Settings().title.aaTarget, 1);
    Choose(Item(fAATarget, "Average"));
    EXPECT_EQ(chart->Settings().title.aaTarget, 3);
    EXPECT_EQ(chart->Settings().value.aaTarget, 2);
}

TEST_F(ChartColorTabTest, WithAnotherTargetAntialiasingChangesNothing)
{
    ShowPage();
    ChooseTarget("Chart");
    const BMessage before = ChartSettings();
    for (uint32 code : {MSG_AA_TARGET_CHART, MSG_AA_TARGET_BACKGROUND, MSG_AA_TARGET_AVERAGE, MSG_AA_VALUE}) {
        BMessage message(code);
        fPage->MessageReceived(&message);
    }
    EXPECT_TRUE(ChartSettings().HasSameData(before));
    EXPECT_STREQ(fAA->Label(), "Antialiasing 0 %");
}

TEST_F(ChartColorTabTest, TransparentBackground)
{
    ShowPage();
    Use(fTransparent, B_CONTROL_ON);
    EXPECT_TRUE(chart->Settings().transparent);
    Use(fTransparent, B_CONTROL_OFF);
    EXPECT_FALSE(chart->Settings().transparent);
    chart->SetTransparent(true);
    fPage->GetState();
    EXPECT_EQ(fTransparent->Value(), B_CONTROL_ON);
}

TEST_F(ChartColorTabTest, PickDesktopGivesItsColorToTheTarget)
{
    ShowPage();
    ChooseTarget("Background");
    PressPick(1000000);
    EXPECT_EQ(fColors->ValueAsColor(), kDesktop);
    EXPECT_EQ(chart->Settings().backgroundColor, kDesktop);
    EXPECT_EQ(OpenAlert(), nullptr);
}

TEST_F(ChartColorTabTest, TheThirdQuickPickIsOneTooMany)
{
    ShowPage();
    PressPick(1000000);
    PressPick(499999);
    EXPECT_EQ(OpenAlert(), nullptr);
    PressPick(499999);
    EXPECT_EQ(OpenAlert(), nullptr);
    PressPick(499999);
    BAlert* alert = OpenAlert();
    ASSERT_NE(alert, nullptr);
    EXPECT_STREQ(alert->Title(), "Fun");
    EXPECT_STREQ(alert->Text(), "Hey men, stop picking me or... !\n\n\t\t\t\t- Desktop");
    EXPECT_EQ(alert->CountButtons(), 1);
    EXPECT_STREQ(alert->ButtonLabel(0), " FunFunFun  :) ");
    EXPECT_EQ(alert->Type(), B_WARNING_ALERT);
    alert->PostMessage(B_QUIT_REQUESTED);
    test::Turn();
    // The count has started over.
    PressPick(499999);
    PressPick(499999);
    EXPECT_EQ(OpenAlert(), nullptr);
}

TEST_F(ChartColorTabTest, APauseBeginsTheCountAgain)
{
    ShowPage();
    for (int i = 0; i < 4; i++) {
        PressPick(500000);
        PressPick(499999);
        PressPick(499999);
    }
    EXPECT_EQ(OpenAlert(), nullptr);
}

TEST_F(ChartColorTabTest, TestOnDesktop)
{
    ShowPage();
    PickColor(kRed);
    EXPECT_EQ(BScreen().DesktopColor(), kDesktop);
    Use(fTest, B_CONTROL_ON);
    EXPECT_EQ(BScreen().DesktopColor(), kRed);
    PickColor({1, 2, 3, 255});
    EXPECT_EQ(BScreen().DesktopColor(), (rgb_color{1, 2, 3, 255}));
    ChooseTarget("Title");
    EXPECT_TRUE(SameRGB(BScreen().DesktopColor(), chart->Settings().title.color));
    Use(fTest, B_CONTROL_OFF);
    EXPECT_EQ(BScreen().DesktopColor(), kDesktop);
}

TEST_F(ChartColorTabTest, ClosingTheWindowPutsTheDesktopBack)
{
    ShowPage();
    PickColor(kRed);
    Use(fTest, B_CONTROL_ON);
    ASSERT_EQ(BScreen().DesktopColor(), kRed);
    ClosePrefs();
    EXPECT_EQ(BScreen().DesktopColor(), kDesktop);
}

TEST_F(ChartColorTabTest, ClosingItWithoutATestLeavesTheDesktopAlone)
{
    ShowPage();
    PickColor(kRed);
    BScreen().SetDesktopColor({9, 9, 9, 255});
    ClosePrefs();
    EXPECT_EQ(BScreen().DesktopColor(), (rgb_color{9, 9, 9, 255}));
}

TEST_F(ChartColorTabTest, RevertPutsTheChartBackAndTheTargetToNone)
{
    const BMessage before = ChartSettings();
    ShowPage();
    PickColor({5, 6, 7, 255});
    ChooseTarget("Title");
    PickColor(kRed);
    Use(fAA, 100);
    ChooseTarget("Background");
    PickColor({70, 80, 90, 255});
    Post(MSG_PREFS_REVERT);
    EXPECT_TRUE(ChartSettings().HasSameData(before));
    EXPECT_STREQ(Marked(fTarget->Menu()), "< none >");
    EXPECT_FALSE(fAA->IsEnabled());
    EXPECT_EQ(fColors->ValueAsColor(), (rgb_color{5, 6, 7, 255}));
    EXPECT_EQ(fPreview->ViewColor(), (rgb_color{5, 6, 7, 255}));
    PickColor(kRed);
    EXPECT_TRUE(ChartSettings().HasSameData(before));
}

TEST_F(ChartColorTabTest, AntialiasingSetToNothingIsNotPutBack)
{
    // Loading treats a strength of 0 as missing, and always has.
    chart->SetTitleAAValue(0);
    ShowPage();
    ChooseTarget("Title");
    Use(fAA, 60);
    fPage->Revert();
    EXPECT_EQ(chart->Settings().title.aaValue, 0.6f);
}

TEST_F(ChartColorTabTest, ADragCarriesTheColors)
{
    ShowPage();
    BMessage message;
    EXPECT_TRUE(fPage->SavePrefsForDD(&message));
    BMessage expected(MSG_PREFS_DROP);
    chart->SaveColorPrefsTo(&expected);
    EXPECT_TRUE(message.HasSameData(expected));
}

TEST_F(ChartColorTabTest, Layout)
{
    ShowPage();
    for (const BPoint size : {BPoint(440, 330), BPoint(777, 555)}) {
        prefs->ResizeTo(size.x, size.y);
        test::Turn();
        const float width = fPage->Bounds().Width();
        const float right = fColors->Bounds().right;
        const float height = fColors->Bounds().Height();
        const float pick = fPick->Bounds().Height();
        EXPECT_EQ(fColors->Frame().LeftTop(), BPoint(0, 0));
        EXPECT_EQ(fPreview->Frame().LeftTop(), BPoint(right + 5, 0));
        EXPECT_NEAR(fPreview->Bounds().Width(), fPage->Bounds().right - right - 5, 0.001);
        EXPECT_NEAR(fPreview->Bounds().Height(), height - pick - 3, 0.001);
        EXPECT_EQ(fPick->Frame().LeftTop(), BPoint(right + 5, height - pick));
        EXPECT_NEAR(fPick->Bounds().Width(), fPage->Bounds().right - right - 5, 0.001);

        const float top = fColors->Frame().bottom + 1;
        const float space = fPage->Bounds().bottom - top;
        const float field = fTarget->Bounds().Height();
        float gap = (space - 2 * field) / 3;
        EXPECT_NEAR(fTarget->Frame().left, width * 0.02f, 0.001);
        EXPECT_NEAR(fTarget->Frame().top, top + gap, 0.001);
        EXPECT_NEAR(fAATarget->Frame().top, top + 2 * gap + field, 0.001);
        EXPECT_NEAR(fAATarget->Bounds().Width(), width * 0.36f, 0.001);
        EXPECT_NEAR(fTarget->Divider(), width * 0.36f / 2.3f, 0.001);
        EXPECT_NEAR(fAATarget->Divider(), width * 0.36f / 2.3f, 0.001);

        const float box = fTest->Bounds().Height();
        gap = (space - 2 * box - fAA->Bounds().Height()) * 0.25f;
        EXPECT_GT(gap, 0);
        EXPECT_NEAR(fTest->Frame().left, width * 0.42f, 0.001);
        EXPECT_NEAR(fTest->Frame().top, top + gap, 0.001);
        EXPECT_NEAR(fTransparent->Frame().top, top + 2 * gap + box, 0.001);
        EXPECT_NEAR(fAA->Frame().top, top + 3 * gap + 2 * box, 0.001);
        EXPECT_NEAR(fAA->Bounds().Width(), width * 0.56f, 0.001);
    }
}

TEST_F(ChartColorTabTest, AChartThatIsGoneIsNotTouched)
{
    ShowPage();
    ChooseTarget("Title");
    const BMessage before = ChartSettings();
    fPage->ForgetModel();
    PickColor(kRed);
    Use(fAA, 100);
    Use(fTransparent, B_CONTROL_ON);
    ChooseTarget("Chart");
    fPage->Revert();
    fPage->GetState();
    EXPECT_TRUE(ChartSettings().HasSameData(before));
}
