// SPDX-License-Identifier: MIT
#include "src/pages/ChartSourcesTab.h"

#include "kits/interface/Button.h"
#include "kits/interface/ScrollView.h"
#include "kits/interface/TextControl.h"
#include "src/sampling/list/SourceListView.h"
#include "src/support/MessageCodes.h"
#include "tests/src/pages/PageTest.h"

#include <gtest/gtest.h>

namespace {

class ChartSourcesTabTest : public PageTest {
protected:
    void ShowPage()
    {
        fPage = Show(new ChartSourcesTab(chart));
        fScroll = FindNth<BScrollView>(fPage);
        fList = dynamic_cast<SourceListView*>(fScroll->Target());
        fFilter = FindNth<BTextControl>(fPage);
        fAdd = FindNth<BButton>(fPage);
    }

    void Select(vptarget_t target, int32 flags)
    {
        for (int32 i = 0; const auto* row = dynamic_cast<SourceListItem*>(fList->ItemAt(i)); i++)
            if (row->Target() == target && row->Flags() == flags)
                fList->Select(i);
    }

    std::vector<vptarget_t> Sources() const
    {
        std::vector<vptarget_t> targets;
        for (int32 i = 0; i < chart->CountValueProviders(); i++)
            targets.push_back(chart->ValueProviderAt(i)->Target());
        return targets;
    }

    ChartSourcesTab* fPage = nullptr;
    BScrollView* fScroll = nullptr;
    SourceListView* fList = nullptr;
    BTextControl* fFilter = nullptr;
    BButton* fAdd = nullptr;
};

} // namespace

TEST_F(ChartSourcesTabTest, ShowsTheListOfSources)
{
    ShowPage();
    EXPECT_STREQ(fPage->Name(), "Sources");
    ASSERT_NE(fList, nullptr);
    EXPECT_GT(fList->CountItems(), 20);
    EXPECT_EQ(fScroll->Border(), B_FANCY_BORDER);
}

TEST_F(ChartSourcesTabTest, Layout)
{
    ShowPage();
    for (const BPoint size : {BPoint(440, 280), BPoint(777, 555)}) {
        prefs->ResizeTo(size.x, size.y);
        test::Turn();
        const BRect bounds = fPage->Bounds();
        EXPECT_EQ(fScroll->Frame().LeftTop(), BPoint(5, 5));
        EXPECT_NEAR(fScroll->Bounds().Width(), bounds.Width() - 10, 0.001);
        EXPECT_LT(fScroll->Frame().bottom, fFilter->Frame().top);
        EXPECT_LE(fFilter->Frame().bottom, bounds.bottom - 5 + 0.001);
        EXPECT_EQ(fFilter->Frame().left, 5);
        EXPECT_LT(fFilter->Frame().right, fAdd->Frame().left);
        EXPECT_NEAR(fAdd->Frame().right, bounds.right - 5, 0.001);
        EXPECT_LE(fAdd->Frame().bottom, bounds.bottom - 5 + 0.001);
    }
}

TEST_F(ChartSourcesTabTest, RevertBringsTheSourcesBackAndRedraws)
{
    AddSources(*chart, 2);
    const std::vector<vptarget_t> before = Sources();
    ShowPage();
    BMessage drop(MSG_SOURCE_DROP);
    const BMessage archive = SourceArchive(VP_ALL_CPUS);
    drop.AddMessage("ValueProvider", &archive);
    test::Drop(chart, drop, BPoint(50, 40));
    EXPECT_EQ(chart->CountValueProviders(), 3);
    fPage->Revert();
    EXPECT_EQ(Sources(), before);
}

TEST_F(ChartSourcesTabTest, AChartThatHadNoneKeepsWhatItWasGiven)
{
    // Loading treats an archive without sources as one that does not mention them, and always has.
    ShowPage();
    Select(VP_ALL_CPUS, 0);
    fAdd->Invoke();
    test::Turn();
    fPage->Revert();
    EXPECT_EQ(Sources(), (std::vector<vptarget_t>{VP_ALL_CPUS}));
}

TEST_F(ChartSourcesTabTest, GetStateLeavesTheListAlone)
{
    ShowPage();
    fList->Select(3);
    const int32 rows = fList->FullListCountItems();
    fPage->GetState();
    EXPECT_EQ(fList->CurrentSelection(), 3);
    EXPECT_EQ(fList->FullListCountItems(), rows);
}

TEST_F(ChartSourcesTabTest, ADragCarriesTheSources)
{
    AddSources(*chart, 3);
    ShowPage();
    BMessage message;
    EXPECT_TRUE(fPage->SavePrefsForDD(&message));
    BMessage expected(MSG_PREFS_DROP);
    chart->SaveProviderPrefsTo(&expected);
    EXPECT_TRUE(message.HasSameData(expected));
}

TEST_F(ChartSourcesTabTest, EnterInTheListAddsTheSelectedSource)
{
    ShowPage();
    Select(VP_USED_MEMORY, 0);
    fList->MakeFocus(true);
    test::Turn();
    test::Key(prefs, B_ENTER);
    test::Turn();
    EXPECT_EQ(Sources(), (std::vector<vptarget_t>{VP_USED_MEMORY}));
}

TEST_F(ChartSourcesTabTest, TheButtonAddsItToo)
{
    ShowPage();
    fAdd->Invoke();
    test::Turn();
    EXPECT_TRUE(Sources().empty());
    Select(VP_ALL_CPUS, VP_AVERAGE);
    fAdd->Invoke();
    test::Turn();
    ASSERT_EQ(Sources(), (std::vector<vptarget_t>{VP_ALL_CPUS}));
    EXPECT_EQ(chart->ValueProviderAt(0)->Flags(), VP_AVERAGE);
}

TEST_F(ChartSourcesTabTest, ANinthSourceIsRefused)
{
    ShowPage();
    Select(VP_ALL_CPUS, 0);
    for (int i = 0; i < 9; i++)
        fAdd->Invoke();
    test::Turn();
    EXPECT_EQ(chart->CountValueProviders(), 8);
    BAlert* alert = OpenAlert();
    ASSERT_NE(alert, nullptr);
    EXPECT_STREQ(alert->Title(), "Qel alert");
    alert->PostMessage(B_QUIT_REQUESTED);
    test::Turn();
}

TEST_F(ChartSourcesTabTest, TypingNarrowsTheListAndEnterAddsWhatIsLeft)
{
    ShowPage();
    fFilter->MakeFocus(true);
    test::Turn();
    for (char key : {'u', 's', 'e', 'd', ' ', 'm'})
        test::Key(prefs, key);
    test::Turn();
    EXPECT_EQ(fList->FullListCountItems(), 2);
    test::Key(prefs, B_ENTER);
    test::Turn();
    EXPECT_EQ(Sources(), (std::vector<vptarget_t>{VP_USED_MEMORY}));
}

TEST_F(ChartSourcesTabTest, EnterAddsThePlainFormOfAProcessor)
{
    ShowPage();
    fFilter->MakeFocus(true);
    test::Turn();
    for (char key : {'c', 'p', 'u', ' ', '1'})
        test::Key(prefs, key);
    test::Turn();
    test::Key(prefs, B_ENTER);
    test::Turn();
    ASSERT_EQ(Sources(), (std::vector<vptarget_t>{VP_FIRST_CPU}));
    EXPECT_EQ(chart->ValueProviderAt(0)->Flags(), 0);
}

TEST_F(ChartSourcesTabTest, WithoutASelectionNothingCanBeAdded)
{
    ShowPage();
    EXPECT_FALSE(fAdd->IsEnabled());
    fList->MakeFocus(true);
    test::Turn();
    test::Key(prefs, B_DOWN_ARROW);
    test::Turn();
    EXPECT_GE(fList->CurrentSelection(), 0);
    EXPECT_TRUE(fAdd->IsEnabled());

    fFilter->MakeFocus(true);
    test::Turn();
    for (char key : {'x', 'x', 'x'})
        test::Key(prefs, key);
    test::Turn();
    EXPECT_EQ(fList->CountItems(), 0);
    EXPECT_FALSE(fAdd->IsEnabled());
    for (int i = 0; i < 3; i++)
        test::Key(prefs, B_BACKSPACE);
    test::Turn();
    EXPECT_GE(fList->CurrentSelection(), 0) << "what was selected before";
    EXPECT_TRUE(fAdd->IsEnabled());
}

TEST_F(ChartSourcesTabTest, ASelectedSourceInAGroupThatIsClosedCannotBeAdded)
{
    ShowPage();
    Select(VP_FIRST_CPU, 0);
    fList->MakeFocus(true);
    test::Turn();
    // Moves the selection to its group; another press would collapse that.
    test::Key(prefs, B_LEFT_ARROW);
    test::Turn();
    EXPECT_TRUE(fAdd->IsEnabled());
    Select(VP_FIRST_CPU, 0);
    test::Turn();
    const BListItem* group = fList->Superitem(fList->ItemAt(fList->CurrentSelection()));
    const BRect row = fList->ItemFrame(fList->IndexOf(group));
    // On the group's mark.
    const BPoint mark(row.left + 10, (row.top + row.bottom) / 2);
    test::Press(fList, mark);
    test::Release(fList, mark);
    test::Turn();
    ASSERT_FALSE(group->IsExpanded());
    EXPECT_EQ(fAdd->IsEnabled(), fList->CurrentSelection() >= 0);
}

TEST_F(ChartSourcesTabTest, AChartThatIsGoneIsNotTouched)
{
    AddSources(*chart, 1);
    ShowPage();
    fPage->ForgetModel();
    Select(VP_ALL_CPUS, 0);
    fAdd->Invoke();
    test::Turn();
    chart->RemoveValueProvider(-1);
    fPage->Revert();
    EXPECT_TRUE(Sources().empty());
}
