// SPDX-License-Identifier: MIT
#include "kits/interface/Button.h"

#include "kits/support/TypeConstants.h"
#include "tests/kits/interface/WidgetTest.h"

using ButtonTest = WidgetTest;

TEST_F(ButtonTest, PressingItSendsItsMessageWithTimeAndSource)
{
    auto* button = new BButton(BRect(10, 10, 100, 40), "b", "Press", new BMessage(7));
    fPage->AddChild(button);
    test::Click(button, BPoint(20, 10));
    test::Turn();

    ASSERT_EQ(fWindow->heard.size(), 1u);
    const BMessage& message = fWindow->heard[0];
    EXPECT_EQ(message.what, 7u);
    void* source = nullptr;
    EXPECT_EQ(message.FindPointer("source", &source), B_OK);
    EXPECT_EQ(source, static_cast<BControl*>(button));
    int64 when = 0;
    EXPECT_EQ(message.FindInt64("when", &when), B_OK);
    EXPECT_GT(when, 0);
    EXPECT_FALSE(button->Message()->HasData("when", B_INT64_TYPE)) << "the button's own message stays as it is";
}

TEST_F(ButtonTest, SpaceAndEnterPressTheFocusedOne)
{
    auto* button = new BButton(BRect(10, 10, 100, 40), "b", "Press", new BMessage(7));
    fPage->AddChild(button);
    button->MakeFocus();
    test::Key(fWindow, ' ');
    EXPECT_EQ(Heard(), std::vector<uint32>{7});
    test::Key(fWindow, B_ENTER);
    EXPECT_EQ(Heard(), std::vector<uint32>{7});
}

TEST_F(ButtonTest, ATargetSetBeforeIsKept)
{
    auto* button = new BButton(BRect(10, 10, 100, 40), "b", "Press", new BMessage(7));
    auto* other = new ListeningWindow(BRect(0, 0, 100, 100));
    button->SetTarget(other);
    fPage->AddChild(button);
    test::Click(button, BPoint(20, 10));
    EXPECT_TRUE(Heard().empty());
    other->Show();
    test::Turn();
    EXPECT_EQ(other->heard.size(), 1u);
    other->Lock();
    other->Quit();
}

TEST_F(ButtonTest, ADisabledOneAnswersNobody)
{
    auto* button = new BButton(BRect(10, 10, 100, 40), "b", "Press", new BMessage(7));
    fPage->AddChild(button);
    button->SetEnabled(false);
    test::Click(button, BPoint(20, 10));
    EXPECT_TRUE(Heard().empty());
    button->SetEnabled(true);
    test::Click(button, BPoint(20, 10));
    EXPECT_EQ(Heard(), std::vector<uint32>{7});
}

TEST_F(ButtonTest, WithoutAMessageNothingIsSent)
{
    auto* button = new BButton(BRect(10, 10, 100, 40), "b", "Press", nullptr);
    fPage->AddChild(button);
    test::Click(button, BPoint(20, 10));
    EXPECT_TRUE(Heard().empty());
    EXPECT_EQ(button->Invoke(), B_BAD_VALUE);
}

TEST_F(ButtonTest, TheLabelIsItsAccessibleNameAndIsShownAsItIs)
{
    auto* button = new BButton(BRect(10, 10, 100, 40), "name", "Cut & paste", nullptr);
    fPage->AddChild(button);
    EXPECT_EQ(AccessibleName(button), "Cut & paste");
    EXPECT_EQ(FocusOf(button)->property("text").toString().toStdString(), "Cut && paste");
    button->SetLabel("Go");
    EXPECT_EQ(AccessibleName(button), "Go");
}

TEST_F(ButtonTest, GrowsToItsPreferredSizeAndKeepsALargerOne)
{
    auto* small = new BButton(BRect(10, 10, 15, 15), "small", "A rather long label", nullptr);
    auto* large = new BButton(BRect(10, 60, 390, 120), "large", "x", nullptr);
    float width = 0;
    float height = 0;
    small->GetPreferredSize(&width, &height); // before it is in a window
    EXPECT_GT(width, 60);
    fPage->AddChild(small);
    fPage->AddChild(large);
    EXPECT_EQ(small->Bounds(), BRect(0, 0, width, height));
    EXPECT_EQ(large->Frame(), BRect(10, 60, 390, 120));
    large->ResizeToPreferred();
    EXPECT_LT(large->Bounds().Width(), 380);
}

TEST_F(ButtonTest, EnterPressesTheDefaultOneFromElsewhere)
{
    auto* first = new BButton(BRect(10, 10, 100, 40), "1", "One", new BMessage(1));
    auto* second = new BButton(BRect(10, 60, 100, 90), "2", "Two", new BMessage(2));
    auto* third = new BView(BRect(10, 100, 100, 190), "3", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE);
    fPage->AddChild(first);
    fPage->AddChild(second);
    fPage->AddChild(third);
    first->MakeDefault(true);
    second->MakeDefault(true);
    EXPECT_EQ(fWindow->DefaultButton(), second);
    third->MakeFocus();
    test::Key(fWindow, B_ENTER);
    EXPECT_EQ(Heard(), std::vector<uint32>{2});
    second->MakeDefault(false);
    EXPECT_EQ(fWindow->DefaultButton(), nullptr);
    test::Key(fWindow, B_ENTER);
    EXPECT_TRUE(Heard().empty());
}

TEST_F(ButtonTest, TakesTheColourOfItsParentAndCanBeGivenAnother)
{
    auto* button = new BButton(BRect(10, 10, 100, 40), "b", "Press", nullptr);
    fPage->AddChild(button);
    EXPECT_EQ(button->ViewColor(), make_color(216, 216, 216));
    button->SetViewColor(200, 200, 200);
    EXPECT_EQ(button->ViewColor(), make_color(200, 200, 200));
}

TEST_F(ButtonTest, ALabelSetOnAnotherThreadShowsLater)
{
    auto* button = new BButton(BRect(10, 10, 100, 40), "b", "Press", nullptr);
    fPage->AddChild(button);
    OnOtherThread([&] { button->SetLabel("Elsewhere"); });
    EXPECT_TRUE(
        test::WaitFor([&] { return FocusOf(button)->property("text").toString() == QLatin1String("Elsewhere"); }));
}

TEST_F(ButtonTest, CanGoWithItsWindowRightAfterThePress)
{
    auto* button = new BButton(BRect(10, 10, 100, 40), "b", "Press", new BMessage(B_QUIT_REQUESTED));
    fPage->AddChild(button);
    const BMessenger window(fWindow);
    test::Click(button, BPoint(20, 10));
    test::Turn();
    fWindow = nullptr;
    EXPECT_FALSE(window.IsValid());
}
