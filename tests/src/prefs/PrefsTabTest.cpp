// SPDX-License-Identifier: MIT
#include "kits/interface/TabView.h"
#include "tests/src/prefs/NotingPage.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

namespace {

class PrefsTabTest : public testing::Test {
protected:
    PrefsTabTest()
        : fWindow(new BWindow(BRect(100, 100, 500, 400), "pages", B_TITLED_WINDOW, 0))
        , fTabView(new BTabView(BRect(0, 0, 400, 300), "tabs", B_WIDTH_AS_USUAL, B_FOLLOW_ALL))
        , fPage(new NotingPage("page"))
    {
        fWindow->AddChild(fTabView);
        fTabView->AddTab(fPage);
        fTabView->AddTab(new NotingPage("other"));
        fPage->SetOwner(fTabView);
        static_cast<NotingPage*>(fTabView->TabAt(1)->View())->SetOwner(fTabView);
    }
    ~PrefsTabTest() override
    {
        fWindow->Quit();
        test::Turn();
    }

    BWindow* fWindow;
    BTabView* fTabView;
    NotingPage* fPage;
};

} // namespace

TEST_F(PrefsTabTest, BeginsWithAProvisionalSize)
{
    EXPECT_EQ(fPage->Frame(), BRect(0, 0, 100, 100));
    EXPECT_STREQ(fPage->Name(), "page");
    EXPECT_EQ(fPage->ResizingMode(), uint32(B_FOLLOW_ALL));
    EXPECT_EQ(fPage->Flags(), uint32(B_WILL_DRAW | B_FRAME_EVENTS));
    EXPECT_EQ(fPage->ViewColor(), make_color(216, 216, 216, 255));
    EXPECT_EQ(fPage->rerenders, 0);
    EXPECT_EQ(fPage->states, 0);
}

TEST_F(PrefsTabTest, FillsTheTabViewButForAMargin)
{
    fTabView->Select(0);
    const float height = 300 - fTabView->TabHeight() - 10;
    EXPECT_EQ(fPage->Frame(), BRect(5, 5, 5 + 390, 5 + height));
}

TEST_F(PrefsTabTest, IsLaidOutOnceAndFilledEachTimeItIsShown)
{
    fTabView->Select(0);
    EXPECT_EQ(fPage->rerenders, 1);
    EXPECT_EQ(fPage->states, 1);
    fWindow->Show();
    test::Turn();
    const int rerenders = fPage->rerenders;
    fTabView->Select(1);
    fTabView->Select(0);
    EXPECT_EQ(fPage->rerenders, rerenders);
    EXPECT_EQ(fPage->states, 2);
}

TEST_F(PrefsTabTest, IsLaidOutAnewWhenItsSizeChanges)
{
    fTabView->Select(0);
    fWindow->Show();
    test::Turn();
    const int before = fPage->rerenders;
    const int states = fPage->states;
    fTabView->ResizeTo(fTabView->Bounds().Width() + 20, fTabView->Bounds().Height() + 30);
    test::Turn();
    EXPECT_EQ(fPage->Bounds().Width(), 410);
    EXPECT_GT(fPage->rerenders, before);
    EXPECT_EQ(fPage->states, states);
}

TEST_F(PrefsTabTest, TakesTheSizeThatTheTabViewGotWhileItDidNotShow)
{
    fTabView->Select(0);
    fWindow->Show();
    fTabView->Select(1);
    fTabView->ResizeTo(fTabView->Bounds().Width() - 40, fTabView->Bounds().Height() - 20);
    test::Turn();
    const int before = fPage->rerenders;
    fTabView->Select(0);
    test::Turn();
    EXPECT_EQ(fPage->Bounds().Width(), 350);
    EXPECT_EQ(fPage->Frame().LeftTop(), BPoint(5, 5));
    EXPECT_GT(fPage->rerenders, before);
}
