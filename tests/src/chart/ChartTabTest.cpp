// SPDX-License-Identifier: MIT
#include "src/chart/ChartTab.h"

#include "src/chart/ChartSteps.h"
#include "src/chart/ChartViewHolder.h"
#include "tests/src/chart/ChartTestKit.h"

namespace {

class ChartTabTest : public ChartWindowTest {
protected:
    void SetUp() override
    {
        ChartWindowTest::SetUp();
        tabs = new BTabView(window->Bounds(), "");
        window->AddChild(tabs);
        tabs->AddTab(new BView(BRect(0, 0, 10, 10), "Other", B_FOLLOW_ALL_SIDES, 0));
        holder = new ChartViewHolder(BRect(0, 0, 100, 100));
        tab = new ChartTab(window, nullptr, BRect(0, 0, 299, 149));
        tabs->AddTab(holder, tab);
        tabs->Select(0);
    }

    BTabView* tabs = nullptr;
    ChartViewHolder* holder = nullptr;
    ChartTab* tab = nullptr;
};

} // namespace

TEST_F(ChartTabTest, IsLabelledWithTheHoldersName)
{
    EXPECT_STREQ(tab->Label(), "Charts");
}

TEST_F(ChartTabTest, SelectingGivesTheWindowItsSizeAndLeavesItsPlace)
{
    const BRect before = window->Frame();
    tabs->Select(1);
    EXPECT_EQ(window->Frame().LeftTop(), before.LeftTop());
    EXPECT_EQ(window->Frame().Width(), 299);
    EXPECT_EQ(window->Frame().Height(), 149);
    EXPECT_EQ(tab->OtherFrame(), before);
}

TEST_F(ChartTabTest, TheHolderFillsWhatIsBelowTheStripThreePixelsOffTheEdges)
{
    tabs->Select(1);
    const BRect container = tabs->ContainerView()->Bounds();
    EXPECT_EQ(holder->Parent(), tabs->ContainerView());
    EXPECT_EQ(holder->Frame(), BRect(3, 3, container.right - 3, container.bottom - 3));
    EXPECT_EQ(tabs->Bounds().Height() - tabs->TabHeight(), container.Height());
    EXPECT_EQ(holder->ResizingMode(), static_cast<uint32>(B_FOLLOW_ALL_SIDES));
    for (int32 i = 0; i < 3; i++)
        EXPECT_EQ(holder->ChartAt(i)->Frame(), ChartBand(holder->Bounds(), 3, i));
}

TEST_F(ChartTabTest, TheWindowRemembersASizeForEachSide)
{
    const BRect other = window->Frame();
    tabs->Select(1);
    window->ResizeTo(399, 249);
    tabs->Select(0);
    EXPECT_EQ(tab->ChartFrame().Width(), 399);
    EXPECT_EQ(window->Frame(), other);
    window->ResizeTo(222, 111);
    tabs->Select(1);
    EXPECT_EQ(window->Frame().Width(), 399);
    EXPECT_EQ(window->Frame().Height(), 249);
    EXPECT_EQ(holder->Frame().right, tabs->ContainerView()->Bounds().right - 3);
    tabs->Select(0);
    EXPECT_EQ(window->Frame().Width(), 222);
    EXPECT_EQ(window->Frame().Height(), 111);
}

TEST_F(ChartTabTest, TheHolderFollowsTheWindow)
{
    tabs->Select(1);
    window->ResizeTo(349, 199);
    test::Turn();
    const BRect container = tabs->ContainerView()->Bounds();
    EXPECT_EQ(holder->Frame(), BRect(3, 3, container.right - 3, container.bottom - 3));
    for (int32 i = 0; i < 3; i++)
        EXPECT_EQ(holder->ChartAt(i)->Frame(), ChartBand(holder->Bounds(), 3, i));
}

TEST_F(ChartTabTest, FramesOfAFileAreGivenToIt)
{
    tab->SetChartFrame(BRect(0, 0, 411, 222));
    tab->SetOtherFrame(BRect(0, 0, 1, 1));
    tabs->Select(1);
    EXPECT_EQ(window->Frame().Width(), 411);
    EXPECT_EQ(tab->OtherFrame().Width(), kTestWindow.Width());
}
