// SPDX-License-Identifier: MIT
#include "src/prefs/DDTabView.h"

#include "kits/support/TypeConstants.h"
#include "src/prefs/DDTab.h"
#include "tests/src/prefs/NotingPage.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

class DDTabViewTest : public testing::Test {
protected:
    DDTabViewTest()
        : fWindow(new BWindow(BRect(100, 100, 500, 400), "tabs", B_TITLED_WINDOW, 0))
        , fTabView(new DDTabView(BRect(20, 30, 380, 280)))
    {
        fWindow->AddChild(fTabView);
        fWindow->Show();
        test::CatchDrags();
    }
    ~DDTabViewTest() override
    {
        test::Release(fTabView, BPoint(0, 0));
        fWindow->Quit();
        test::Turn();
    }

    void AddPages(std::initializer_list<NotingPage*> pages)
    {
        for (NotingPage* page : pages) {
            fTabView->AddTab(page);
            page->SetOwner(fTabView);
        }
        fTabView->Select(0);
        test::Turn();
    }

    DDTab* TabAt(int32 index) const { return dynamic_cast<DDTab*>(fTabView->TabAt(index)); }

    BPoint Label(int32 index) const
    {
        const BRect frame = TabAt(index)->LabelFrame();
        return BPoint(frame.left + 5, frame.top + 5);
    }

    /// Presses on a label, and drags the pointer out of the view.
    void Pull(int32 index, uint32 buttons, BPoint to)
    {
        test::Press(fTabView, Label(index), buttons);
        test::MoveTo(fTabView, BPoint(Label(index).x, Label(index).y - 1));
        test::MoveTo(fTabView, to);
    }

    /// Returns the outline on the screen of a rectangle in the tab view.
    BRect OnScreen(BRect rect) const { return fTabView->ConvertToScreen(rect); }

    BWindow* fWindow;
    DDTabView* fTabView;
};

constexpr BPoint kAbove(30, -10);

} // namespace

TEST(DDTab, IsNowhereUntilItIsDrawn)
{
    const DDTab tab(nullptr);
    EXPECT_EQ(tab.LabelFrame(), BRect(1, 1, 0, 0));
    EXPECT_FALSE(tab.LabelFrame().Contains(BPoint(1, 1)));
    EXPECT_FALSE(tab.LabelFrame().Contains(BPoint(0, 0)));
}

TEST_F(DDTabViewTest, EveryTabIsOfItsKind)
{
    fTabView->AddTab(new NotingPage("first"), nullptr);
    fTabView->AddTab(new NotingPage("second"), new BTab);
    ASSERT_NE(TabAt(0), nullptr);
    ASSERT_NE(TabAt(1), nullptr);
    EXPECT_STREQ(TabAt(1)->Label(), "second");
    EXPECT_EQ(fTabView->ResizingMode(), uint32(B_FOLLOW_NONE));
}

TEST_F(DDTabViewTest, TabsRememberWhereTheyWereDrawn)
{
    AddPages({new NotingPage("first"), new NotingPage("second")});
    const BRect first = TabAt(0)->LabelFrame();
    const BRect second = TabAt(1)->LabelFrame();
    EXPECT_TRUE(first.IsValid());
    EXPECT_TRUE(second.IsValid());
    EXPECT_GE(second.left, first.right);
    EXPECT_LT(first.bottom, fTabView->TabHeight());
}

TEST_F(DDTabViewTest, ThePrimaryButtonDragsThePressedPage)
{
    AddPages({new NotingPage("first"), new NotingPage("second")});
    Pull(0, B_PRIMARY_MOUSE_BUTTON, kAbove);
    const auto drag = test::TakeDrag();
    ASSERT_NE(drag, nullptr);
    EXPECT_EQ(drag->message.what, uint32(MSG_PREFS_DROP));
    EXPECT_EQ(drag->message.CountNames(B_ANY_TYPE), 1);
    EXPECT_TRUE(drag->message.HasData("first", B_INT32_TYPE));
    EXPECT_EQ(drag->rect, OnScreen(TabAt(0)->LabelFrame()));
}

TEST_F(DDTabViewTest, APressSelectsTheTabThatIsThenDragged)
{
    AddPages({new NotingPage("first"), new NotingPage("second")});
    Pull(1, B_PRIMARY_MOUSE_BUTTON, kAbove);
    EXPECT_EQ(fTabView->Selection(), 1);
    const auto drag = test::TakeDrag();
    ASSERT_NE(drag, nullptr);
    EXPECT_TRUE(drag->message.HasData("second", B_INT32_TYPE));
    EXPECT_FALSE(drag->message.HasData("first", B_INT32_TYPE));
}

TEST_F(DDTabViewTest, AnotherButtonDragsAllPages)
{
    AddPages({new NotingPage("first"), new NotingPage("sampler", false), new NotingPage("third")});
    Pull(0, B_SECONDARY_MOUSE_BUTTON, kAbove);
    const auto drag = test::TakeDrag();
    ASSERT_NE(drag, nullptr);
    EXPECT_EQ(drag->message.what, uint32(MSG_PREFS_DROP));
    EXPECT_EQ(drag->message.CountNames(B_ANY_TYPE), 2);
    EXPECT_TRUE(drag->message.HasData("first", B_INT32_TYPE));
    EXPECT_TRUE(drag->message.HasData("third", B_INT32_TYPE));
    // Always from the corner of the view.
    EXPECT_EQ(drag->rect, OnScreen(BRect(0, 0, 0, 0) | TabAt(0)->LabelFrame() | TabAt(2)->LabelFrame()));
}

TEST_F(DDTabViewTest, WithNothingToCarryAnEmptyMessageIsDragged)
{
    AddPages({new NotingPage("sampler", false)});
    Pull(0, B_SECONDARY_MOUSE_BUTTON, kAbove);
    const auto drag = test::TakeDrag();
    ASSERT_NE(drag, nullptr);
    EXPECT_EQ(drag->message.what, 0u);
    EXPECT_TRUE(drag->message.IsEmpty());
    EXPECT_EQ(drag->rect, OnScreen(BRect(0, 0, 0, 0)));
}

TEST_F(DDTabViewTest, APageThatCannotBeCarriedIsNotDraggedAlone)
{
    AddPages({new NotingPage("sampler", false)});
    Pull(0, B_PRIMARY_MOUSE_BUTTON, kAbove);
    EXPECT_EQ(test::TakeDrag(), nullptr);
}

TEST_F(DDTabViewTest, LeavingBelowTheStripDragsNothing)
{
    AddPages({new NotingPage("first")});
    Pull(0, B_PRIMARY_MOUSE_BUTTON, BPoint(-5, fTabView->TabHeight()));
    EXPECT_EQ(test::TakeDrag(), nullptr);
    test::Release(fTabView, BPoint(0, 0));
    Pull(0, B_SECONDARY_MOUSE_BUTTON, BPoint(-5, fTabView->TabHeight() + 20));
    EXPECT_EQ(test::TakeDrag(), nullptr);
}

TEST_F(DDTabViewTest, LeavingBesideTheStripDrags)
{
    AddPages({new NotingPage("first")});
    Pull(0, B_PRIMARY_MOUSE_BUTTON, BPoint(-5, fTabView->TabHeight() - 1));
    EXPECT_NE(test::TakeDrag(), nullptr);
}

TEST_F(DDTabViewTest, WithoutAPressOnALabelThePrimaryButtonDragsNothing)
{
    AddPages({new NotingPage("first")});
    const BPoint besideLabels(TabAt(0)->LabelFrame().right + 20, 5);
    test::Press(fTabView, besideLabels);
    test::MoveTo(fTabView, BPoint(besideLabels.x, besideLabels.y - 1));
    test::MoveTo(fTabView, kAbove);
    EXPECT_EQ(test::TakeDrag(), nullptr);
}

TEST_F(DDTabViewTest, AnEarlierPressOnALabelStillCounts)
{
    AddPages({new NotingPage("first")});
    test::Click(fTabView, Label(0));
    const BPoint besideLabels(TabAt(0)->LabelFrame().right + 20, 5);
    test::Press(fTabView, besideLabels);
    test::MoveTo(fTabView, BPoint(besideLabels.x, besideLabels.y - 1));
    test::MoveTo(fTabView, kAbove);
    const auto drag = test::TakeDrag();
    ASSERT_NE(drag, nullptr);
    EXPECT_TRUE(drag->message.HasData("first", B_INT32_TYPE));
}

TEST_F(DDTabViewTest, LeavingWithoutAButtonDragsNothing)
{
    AddPages({new NotingPage("first")});
    test::Click(fTabView, Label(0));
    test::MoveTo(fTabView, Label(0));
    test::MoveTo(fTabView, kAbove);
    EXPECT_EQ(test::TakeDrag(), nullptr);
}

TEST_F(DDTabViewTest, MovesInsideTheViewDragNothing)
{
    AddPages({new NotingPage("first"), new NotingPage("second")});
    Pull(0, B_PRIMARY_MOUSE_BUTTON, Label(1));
    EXPECT_EQ(test::TakeDrag(), nullptr);
}

TEST_F(DDTabViewTest, AViewThatIsNoPageIsNotDragged)
{
    fTabView->AddTab(new BView(BRect(0, 0, 10, 10), "plain", B_FOLLOW_NONE, 0));
    fTabView->Select(0);
    test::Turn();
    Pull(0, B_PRIMARY_MOUSE_BUTTON, kAbove);
    EXPECT_EQ(test::TakeDrag(), nullptr);
}

TEST_F(DDTabViewTest, ThePageThatShowsIsCopied)
{
    AddPages({new NotingPage("first"), new NotingPage("second"), new NotingPage("own", false)});
    fTabView->Select(1);
    test::Turn();
    for (BView* view : std::initializer_list<BView*>{fTabView, TabAt(1)->View()}) {
        BMessage message;
        ASSERT_TRUE(view->CopyRequested(&message));
        EXPECT_EQ(message.what, uint32(MSG_PREFS_DROP));
        EXPECT_TRUE(message.HasData("second", B_INT32_TYPE));
        EXPECT_FALSE(message.HasData("first", B_INT32_TYPE));
    }
    fTabView->Select(2);
    test::Turn();
    BMessage message;
    EXPECT_FALSE(fTabView->CopyRequested(&message));
    EXPECT_FALSE(TabAt(2)->View()->CopyRequested(&message));
}
