// SPDX-License-Identifier: MIT
#include "src/prefs/PrefsWindow.h"

#include "kits/interface/Button.h"
#include "kits/interface/Screen.h"
#include "src/prefs/DDTabView.h"
#include "src/prefs/PrefsButtonView.h"
#include "tests/src/prefs/NotingPage.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace {

/// Receives the messages of the window's owner.
class Owner : public BLooper {
public:
    void MessageReceived(BMessage* message) override { last = *message; }

    BMessage last;
};

class PrefsWindowTest : public testing::Test {
protected:
    PrefsWindowTest()
        : fOwner(new Owner)
        , fWindow(new PrefsWindow(BRect(50, 50, 490, 330), "Test preferences", fOwner, &fSlot))
    {
        fOwner->Run();
        fSlot = fWindow;
    }
    ~PrefsWindowTest() override
    {
        if (fSlot != nullptr)
            fSlot->Quit();
        fOwner->Quit();
        test::Turn();
    }

    DDTabView* TabView() const { return Child<DDTabView>(); }
    PrefsButtonView* Row() const { return Child<PrefsButtonView>(); }

    void AddPages()
    {
        fWindow->AddPrefsTab(fFirst);
        fWindow->AddPrefsTab(fSecond);
        fWindow->Show();
        test::Turn();
    }

    void PressButton(const char* label)
    {
        for (int32 i = 0; BView* view = Row()->ChildAt(i); i++) {
            auto* button = dynamic_cast<BButton*>(view);
            if (std::strcmp(button->Label(), label) == 0)
                button->Invoke();
        }
        test::Turn();
    }

    float RowHeight() const
    {
        float width = 0;
        float height = 0;
        Row()->GetPreferredSize(&width, &height);
        return height;
    }

    Owner* fOwner;
    SmartWindow* fSlot = nullptr;
    PrefsWindow* fWindow;
    // Belong to the window once they are added.
    NotingPage* fFirst = new NotingPage("first");
    NotingPage* fSecond = new NotingPage("second");

private:
    template <typename View> View* Child() const
    {
        for (int32 i = 0; BView* view = fWindow->ChildAt(i); i++)
            if (auto* child = dynamic_cast<View*>(view))
                return child;
        return nullptr;
    }
};

} // namespace

TEST_F(PrefsWindowTest, LaysPagesAboveButtons)
{
    fWindow->AddPrefsTab(fFirst);
    fWindow->AddPrefsTab(fSecond);
    const float row = RowHeight();
    EXPECT_GT(row, 10);
    EXPECT_EQ(TabView()->Frame(), BRect(0, 0, 440, 280 - row));
    EXPECT_EQ(Row()->Frame().LeftTop(), BPoint(0, 280 - row + 1));
    EXPECT_EQ(Row()->Bounds().Width(), 440);
    EXPECT_FLOAT_EQ(Row()->Bounds().Height(), row);
}

TEST_F(PrefsWindowTest, TheFirstPageIsSelectedAndStaysSo)
{
    EXPECT_EQ(TabView()->Selection(), -1);
    fWindow->AddPrefsTab(fFirst);
    EXPECT_EQ(TabView()->Selection(), 0);
    EXPECT_EQ(fFirst->states, 1);
    fWindow->AddPrefsTab(fSecond);
    EXPECT_EQ(TabView()->Selection(), 0);
    EXPECT_EQ(fSecond->states, 0);
    EXPECT_STREQ(TabView()->TabAt(1)->Label(), "second");
}

TEST_F(PrefsWindowTest, LaysItselfOutAnewWhenItsSizeChanges)
{
    AddPages();
    fWindow->ResizeTo(600, 500);
    test::Turn();
    const float row = RowHeight();
    EXPECT_EQ(TabView()->Frame(), BRect(0, 0, 600, 500 - row));
    EXPECT_EQ(Row()->Frame().LeftTop(), BPoint(0, 500 - row + 1));
    EXPECT_EQ(Row()->Bounds().Width(), 600);
    EXPECT_EQ(fFirst->Bounds().Width(), 590);
}

TEST_F(PrefsWindowTest, RevertPutsTheShownPageBackAndFillsAll)
{
    AddPages();
    TabView()->Select(1);
    fFirst->states = fSecond->states = 0;
    PressButton("Revert");
    EXPECT_EQ(fFirst->reverts, 0);
    EXPECT_EQ(fSecond->reverts, 1);
    EXPECT_EQ(fFirst->states, 1);
    EXPECT_EQ(fSecond->states, 1);
    EXPECT_NE(fSlot, nullptr);
}

TEST_F(PrefsWindowTest, RevertAllPutsAllPagesBackAndFillsAll)
{
    AddPages();
    fFirst->states = fSecond->states = 0;
    PressButton("Revert all");
    EXPECT_EQ(fFirst->reverts, 1);
    EXPECT_EQ(fSecond->reverts, 1);
    EXPECT_EQ(fFirst->states, 1);
    EXPECT_EQ(fSecond->states, 1);
    EXPECT_NE(fSlot, nullptr);
}

TEST_F(PrefsWindowTest, CancelPutsAllPagesBackAndCloses)
{
    struct Reverted : NotingPage {
        explicit Reverted(int* count)
            : NotingPage("counted")
            , fCount(count)
        {
        }
        void Revert() override { ++*fCount; }

        int* fCount;
    };
    int count = 0;
    AddPages();
    fWindow->AddPrefsTab(new Reverted(&count));
    PressButton("Cancel");
    EXPECT_EQ(count, 1);
    EXPECT_EQ(fSlot, nullptr);
    EXPECT_EQ(fOwner->last.what, uint32(MSG_WINDOW_CLOSED));
    void* container = nullptr;
    EXPECT_EQ(fOwner->last.FindPointer("Container", &container), B_OK);
    EXPECT_EQ(container, &fSlot);
}

TEST_F(PrefsWindowTest, WithoutAPageItsButtonsDoNothing)
{
    fWindow->Show();
    test::Turn();
    PressButton("Revert");
    PressButton("Revert all");
    EXPECT_NE(fSlot, nullptr);
    delete fFirst;
    delete fSecond;
}

TEST_F(PrefsWindowTest, ViewsThatAreNoPagesAreLeftAlone)
{
    AddPages();
    TabView()->AddTab(new BView(BRect(0, 0, 10, 10), "plain", B_FOLLOW_NONE, 0));
    TabView()->Select(2);
    PressButton("Revert");
    PressButton("Revert all");
    EXPECT_EQ(fFirst->reverts, 1);
    EXPECT_EQ(fSecond->reverts, 1);
}

TEST_F(PrefsWindowTest, ComesBackWhereItWas)
{
    AddPages();
    fWindow->MoveTo(120, 130);
    fWindow->ResizeTo(500, 400);
    test::Turn();
    PressButton("Cancel");
    BMessage archive;
    ASSERT_EQ(fOwner->last.FindMessage("Archive", &archive), B_OK);
    auto* again = new PrefsWindow(&archive, "Test", fOwner, &fSlot);
    fSlot = again;
    EXPECT_EQ(again->Frame(), BRect(120, 130, 620, 530));
    EXPECT_STREQ(again->Title(), "Test");
    EXPECT_EQ(again->CountChildren(), 2);
}

TEST_F(PrefsWindowTest, ItsMinimumGrowsToWhatThePagesNeed)
{
    fSecond->minimumSize = BPoint(600, 500);
    fWindow->SetSizeLimits(440, 100000, 280, 100000);
    AddPages();
    float minWidth = 0;
    float maxWidth = 0;
    float minHeight = 0;
    float maxHeight = 0;
    fWindow->GetSizeLimits(&minWidth, &maxWidth, &minHeight, &maxHeight);
    EXPECT_EQ(minWidth, 610);
    EXPECT_EQ(minHeight, std::ceil(510 + TabView()->TabHeight() + RowHeight()));
    EXPECT_EQ(fSecond->Bounds().Width(), 100);
    TabView()->Select(1);
    EXPECT_GE(fSecond->Bounds().Width(), 600);
    EXPECT_GE(fSecond->Bounds().Height(), 500);
}

TEST_F(PrefsWindowTest, WhenItGrowsItStaysOnTheScreen)
{
    const BRect screen = BScreen(fWindow).Frame();
    fSecond->minimumSize = BPoint(600, 300);
    fWindow->MoveTo(screen.right - 200, screen.top + 100);
    AddPages();
    test::Turn();
    EXPECT_GE(fWindow->Bounds().Width(), 610);
    EXPECT_LE(fWindow->Frame().right, screen.right);
    EXPECT_EQ(fWindow->Frame().top, screen.top + 100) << "there is room";

    // A page that needs more room later, and less again.
    fSecond->minimumSize = BPoint(600, 450);
    fWindow->MoveTo(screen.left + 20, screen.bottom - 400);
    test::Turn();
    const float before = fWindow->Bounds().Height();
    fWindow->HoldPages();
    test::Turn();
    EXPECT_GT(fWindow->Bounds().Height(), before);
    EXPECT_LE(fWindow->Frame().bottom, screen.bottom);
    EXPECT_EQ(fWindow->Frame().left, screen.left + 20);
    const BRect grown = fWindow->Frame();
    fSecond->minimumSize = BPoint(100, 100);
    fWindow->HoldPages();
    test::Turn();
    EXPECT_EQ(fWindow->Frame(), grown) << "only the limit is lower";
}

TEST_F(PrefsWindowTest, ItsMinimumStaysWhereThePagesHaveRoom)
{
    fWindow->SetSizeLimits(440, 100000, 280, 100000);
    AddPages();
    float minWidth = 0;
    float maxWidth = 0;
    float minHeight = 0;
    float maxHeight = 0;
    fWindow->GetSizeLimits(&minWidth, &maxWidth, &minHeight, &maxHeight);
    EXPECT_EQ(minWidth, 440);
    EXPECT_EQ(minHeight, 280);
}

TEST_F(PrefsWindowTest, PagesForgetTheirModelWhenItQuits)
{
    struct Forgetting : NotingPage {
        explicit Forgetting(bool* forgot)
            : NotingPage("forgetting")
            , fForgot(forgot)
        {
        }
        void ForgetModel() override { *fForgot = true; }

        bool* fForgot;
    };
    bool forgot = false;
    AddPages();
    fWindow->AddPrefsTab(new Forgetting(&forgot));
    EXPECT_FALSE(forgot);
    fWindow->Quit();
    EXPECT_TRUE(forgot);
    test::Turn();
    EXPECT_EQ(fSlot, nullptr);
}
