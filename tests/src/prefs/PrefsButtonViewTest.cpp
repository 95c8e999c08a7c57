// SPDX-License-Identifier: MIT
#include "src/prefs/PrefsButtonView.h"

#include "kits/interface/Button.h"
#include "src/support/MessageCodes.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

class PrefsButtonViewTest : public testing::Test {
protected:
    PrefsButtonViewTest()
        : fWindow(new BWindow(BRect(100, 100, 700, 400), "buttons", B_TITLED_WINDOW, 0))
        , fRow(new PrefsButtonView(BRect(0, 200, 500, 240)))
    {
        fWindow->AddChild(fRow);
    }
    ~PrefsButtonViewTest() override
    {
        fWindow->Quit();
        test::Turn();
    }

    BButton* Button(const char* label) const
    {
        for (int32 i = 0; BView* view = fRow->ChildAt(i); i++) {
            auto* button = dynamic_cast<BButton*>(view);
            if (button != nullptr && std::strcmp(button->Label(), label) == 0)
                return button;
        }
        return nullptr;
    }

    BWindow* fWindow;
    PrefsButtonView* fRow;
};

} // namespace

TEST_F(PrefsButtonViewTest, HasThreeButtonsWithTheirMessages)
{
    EXPECT_EQ(fRow->CountChildren(), 3);
    EXPECT_EQ(Button("Cancel"), fRow->ChildAt(0));
    EXPECT_EQ(Button("Revert"), fRow->ChildAt(1));
    EXPECT_EQ(Button("Revert all"), fRow->ChildAt(2));
    EXPECT_EQ(Button("Cancel")->Message()->what, uint32(MSG_PREFS_CANCEL));
    EXPECT_EQ(Button("Revert")->Message()->what, uint32(MSG_PREFS_REVERT));
    EXPECT_EQ(Button("Revert all")->Message()->what, uint32(MSG_PREFS_REVERT_ALL));
    EXPECT_STREQ(fRow->Name(), "");
    EXPECT_EQ(fRow->ResizingMode(), uint32(B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM));
    EXPECT_EQ(fRow->ViewColor(), make_color(216, 216, 216, 255));
}

TEST_F(PrefsButtonViewTest, WantsAFifthMoreHeightThanAButton)
{
    float width = 0;
    float height = 0;
    fRow->GetPreferredSize(&width, &height);
    EXPECT_EQ(width, 100);
    EXPECT_EQ(height, Button("Cancel")->Bounds().Height() * 1.2f);
}

TEST_F(PrefsButtonViewTest, LaysThemOutAtTheRight)
{
    fRow->Rerender();
    const BRect all = Button("Revert all")->Frame();
    const BRect revert = Button("Revert")->Frame();
    const BRect cancel = Button("Cancel")->Frame();
    const float gap = (500 * 0.8f - cancel.Width() - revert.Width() - all.Width()) * 0.25f;
    EXPECT_GT(gap, 0);
    EXPECT_NEAR(all.left, 500 * 0.18f + 2 * gap, 0.51);
    EXPECT_NEAR(revert.left, all.left + all.Width() + gap, 1.01);
    EXPECT_NEAR(cancel.left, revert.left + revert.Width() + gap, 1.01);
    EXPECT_NEAR(cancel.right, 500 * 0.98f, 1.01);
    for (const BRect& frame : {all, revert, cancel})
        EXPECT_NEAR(frame.top, (40 - cancel.Height()) * 0.5f, 0.51);
}

TEST_F(PrefsButtonViewTest, ButtonsHaveTheirPreferredSizes)
{
    fRow->Rerender();
    for (const char* label : {"Cancel", "Revert", "Revert all"}) {
        float width = 0;
        float height = 0;
        Button(label)->GetPreferredSize(&width, &height);
        EXPECT_EQ(Button(label)->Bounds().Width(), width);
        EXPECT_EQ(Button(label)->Bounds().Height(), height);
    }
}

TEST_F(PrefsButtonViewTest, InANarrowRowTheyOverlap)
{
    fRow->ResizeTo(100, 40);
    fRow->Rerender();
    EXPECT_LT(Button("Revert all")->Frame().left, 100 * 0.18f);
    EXPECT_LT(Button("Revert")->Frame().left, Button("Revert all")->Frame().right);
    EXPECT_LT(Button("Cancel")->Frame().left, Button("Revert")->Frame().right);
}

TEST_F(PrefsButtonViewTest, AtItsMinimumWidthTheyDoNot)
{
    fRow->ResizeTo(fRow->MinimumWidth(), 40);
    fRow->Rerender();
    EXPECT_GE(Button("Revert")->Frame().left, Button("Revert all")->Frame().right);
    EXPECT_GE(Button("Cancel")->Frame().left, Button("Revert")->Frame().right);
    EXPECT_LE(Button("Cancel")->Frame().right, fRow->MinimumWidth());
}

TEST_F(PrefsButtonViewTest, FollowsItsSize)
{
    fRow->Rerender();
    fWindow->Show();
    test::Turn();
    const float before = Button("Cancel")->Frame().left;
    fRow->ResizeTo(fRow->Bounds().Width() + 50, fRow->Bounds().Height() + 0);
    test::Turn();
    EXPECT_GT(Button("Cancel")->Frame().left, before);
}

TEST_F(PrefsButtonViewTest, TabVisitsThemFromLeftToRight)
{
    test::Show(fWindow);
    fRow->Rerender();
    Button("Revert all")->MakeFocus(true);
    test::Turn();
    std::vector<std::string> visited;
    for (int i = 0; i < 3; i++) {
        for (const char* label : {"Revert all", "Revert", "Cancel"})
            if (Button(label)->IsFocus())
                visited.emplace_back(label);
        test::Key(fWindow, B_TAB);
        test::Turn();
    }
    EXPECT_EQ(visited, (std::vector<std::string>{"Revert all", "Revert", "Cancel"}));
    EXPECT_LT(Button("Revert all")->Frame().right, Button("Revert")->Frame().left);
    EXPECT_LT(Button("Revert")->Frame().right, Button("Cancel")->Frame().left);
}
