// SPDX-License-Identifier: MIT
#include "kits/interface/MenuItem.h"

#include "kits/interface/Menu.h"
#include "kits/support/TypeConstants.h"
#include "tests/kits/interface/WidgetTest.h"

using MenuItemTest = WidgetTest;

TEST_F(MenuItemTest, InvokingSendsACopyWithTimeSourceAndPlace)
{
    BMenu menu("menu");
    menu.AddItem(new BMenuItem("other", nullptr));
    auto* item = new BMenuItem("Line", new BMessage(5));
    item->Message()->AddInt32("Type", 2);
    menu.AddItem(item);
    item->SetTarget(fWindow);
    EXPECT_EQ(item->Invoke(), B_OK);
    test::Turn();

    ASSERT_EQ(fWindow->heard.size(), 1u);
    const BMessage& message = fWindow->heard[0];
    EXPECT_EQ(message.what, 5u);
    int32 value = 0;
    EXPECT_EQ(message.FindInt32("Type", &value), B_OK);
    EXPECT_EQ(value, 2);
    EXPECT_EQ(message.FindInt32("index", &value), B_OK);
    EXPECT_EQ(value, 1);
    void* source = nullptr;
    EXPECT_EQ(message.FindPointer("source", &source), B_OK);
    EXPECT_EQ(source, item);
    EXPECT_TRUE(message.HasData("when", B_INT64_TYPE));
    EXPECT_FALSE(item->Message()->HasData("index", B_INT32_TYPE));
}

TEST_F(MenuItemTest, AnotherMessageCanBeSentInstead)
{
    BMenuItem item("Line", new BMessage(5));
    item.SetTarget(fWindow);
    BMessage other(6);
    EXPECT_EQ(item.Invoke(&other), B_OK);
    EXPECT_EQ(Heard(), std::vector<uint32>{6});
}

TEST_F(MenuItemTest, WithoutMessageOrTargetNothingIsSent)
{
    BMenuItem silent("silent", nullptr);
    silent.SetTarget(fWindow);
    EXPECT_EQ(silent.Invoke(), B_BAD_VALUE);
    BMenuItem lost("lost", new BMessage(5));
    EXPECT_EQ(lost.Invoke(), B_BAD_VALUE);
    EXPECT_TRUE(Heard().empty());
}

TEST_F(MenuItemTest, KeepsWhatItWasGiven)
{
    BMenuItem item(nullptr, nullptr, 'Q', B_SHIFT_KEY);
    EXPECT_STREQ(item.Label(), "");
    uint32 modifiers = 0;
    EXPECT_EQ(item.Shortcut(&modifiers), 'Q');
    EXPECT_EQ(modifiers, B_SHIFT_KEY);
    EXPECT_EQ(item.Submenu(), nullptr);
    EXPECT_EQ(item.Menu(), nullptr);
}

TEST_F(MenuItemTest, OwnsItsSubmenu)
{
    auto* submenu = new BMenu("sub");
    BMenuItem item(submenu, new BMessage(5));
    EXPECT_EQ(item.Submenu(), submenu);
    EXPECT_EQ(submenu->Superitem(), &item);
    EXPECT_STREQ(item.Label(), "sub");
    EXPECT_EQ(item.Command(), 5u);
}
