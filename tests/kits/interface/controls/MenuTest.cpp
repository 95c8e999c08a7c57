// SPDX-License-Identifier: MIT
#include "kits/interface/Menu.h"

#include "kits/interface/PopUpMenu.h"
#include "tests/kits/interface/WidgetTest.h"

#include <memory>

class MenuTest : public testing::Test {
protected:
    static BMenuItem* Item(const char* label, uint32 what = 1) { return new BMenuItem(label, new BMessage(what)); }

    BMenu fMenu{"menu"};
};

TEST_F(MenuTest, ItemsStandWhereTheyAreAdded)
{
    BMenuItem* b = Item("b");
    BMenuItem* a = Item("a");
    BMenuItem* c = Item("c");
    EXPECT_TRUE(fMenu.AddItem(b));
    EXPECT_TRUE(fMenu.AddItem(a, 0));
    EXPECT_TRUE(fMenu.AddItem(c, 2));
    EXPECT_EQ(fMenu.CountItems(), 3);
    EXPECT_EQ(fMenu.ItemAt(0), a);
    EXPECT_EQ(fMenu.ItemAt(1), b);
    EXPECT_EQ(fMenu.IndexOf(c), 2);
    EXPECT_EQ(fMenu.ItemAt(3), nullptr);
    EXPECT_EQ(fMenu.ItemAt(-1), nullptr);
    EXPECT_EQ(a->Menu(), &fMenu);
}

TEST_F(MenuTest, WhatCannotBeAddedStaysTheCallers)
{
    BMenu other("other");
    BMenuItem* taken = Item("taken");
    other.AddItem(taken);
    const std::unique_ptr<BMenuItem> free(Item("free"));
    EXPECT_FALSE(fMenu.AddItem(taken));
    EXPECT_FALSE(fMenu.AddItem(static_cast<BMenuItem*>(nullptr)));
    EXPECT_FALSE(fMenu.AddItem(free.get(), 1));
    EXPECT_FALSE(fMenu.AddItem(free.get(), -1));
    EXPECT_EQ(fMenu.CountItems(), 0);
}

TEST_F(MenuTest, ARemovedItemIsTheCallers)
{
    BMenuItem* a = Item("a");
    fMenu.AddItem(a);
    fMenu.AddItem(Item("b"));
    EXPECT_TRUE(fMenu.RemoveItem(a));
    EXPECT_FALSE(fMenu.RemoveItem(a));
    EXPECT_EQ(a->Menu(), nullptr);
    delete a;
    const std::unique_ptr<BMenuItem> b(fMenu.RemoveItem(static_cast<int32>(0)));
    EXPECT_STREQ(b->Label(), "b");
    EXPECT_EQ(fMenu.RemoveItem(static_cast<int32>(0)), nullptr);
}

TEST_F(MenuTest, DeletingAnItemTakesItOut)
{
    BMenuItem* a = Item("a");
    fMenu.AddItem(a);
    delete a;
    EXPECT_EQ(fMenu.CountItems(), 0);
}

TEST_F(MenuTest, SubmenusKnowWhatOpensThem)
{
    auto* submenu = new BMenu("Sources...");
    EXPECT_TRUE(fMenu.AddItem(submenu));
    EXPECT_EQ(fMenu.SubmenuAt(0), submenu);
    EXPECT_EQ(submenu->Supermenu(), &fMenu);
    EXPECT_EQ(submenu->Superitem(), fMenu.ItemAt(0));
    EXPECT_STREQ(fMenu.ItemAt(0)->Label(), "Sources...");
    EXPECT_EQ(fMenu.Supermenu(), nullptr);
}

TEST_F(MenuTest, ItemsAreFoundByLabelAndCommandAlsoInSubmenus)
{
    auto* submenu = new BMenu("sub");
    fMenu.AddItem(Item("a", 1));
    fMenu.AddSeparatorItem();
    fMenu.AddItem(submenu);
    submenu->AddItem(Item("deep", 7));
    EXPECT_EQ(fMenu.FindItem("deep"), submenu->ItemAt(0));
    EXPECT_EQ(fMenu.FindItem(7u), submenu->ItemAt(0));
    EXPECT_EQ(fMenu.FindItem("none"), nullptr);
    EXPECT_EQ(fMenu.FindItem(8u), nullptr);
    EXPECT_EQ(fMenu.FindItem(""), nullptr) << "a separator is nothing to find";
    EXPECT_TRUE(fMenu.ItemAt(1)->IsSeparator());
}

TEST_F(MenuTest, InRadioModeOneItemIsMarked)
{
    fMenu.SetRadioMode(true);
    for (const char* label : {"Solid", "Line", "Point"})
        fMenu.AddItem(Item(label));
    EXPECT_EQ(fMenu.FindMarked(), nullptr);
    fMenu.ItemAt(0)->SetMarked(true);
    fMenu.ItemAt(2)->SetMarked(true);
    EXPECT_FALSE(fMenu.ItemAt(0)->IsMarked());
    EXPECT_EQ(fMenu.FindMarked(), fMenu.ItemAt(2));
    fMenu.ItemAt(1)->Invoke();
    EXPECT_EQ(fMenu.FindMarked(), fMenu.ItemAt(1));
}

TEST_F(MenuTest, WithoutItMarksAreIndependent)
{
    fMenu.AddItem(Item("a"));
    fMenu.AddItem(Item("b"));
    fMenu.ItemAt(0)->SetMarked(true);
    fMenu.ItemAt(1)->SetMarked(true);
    EXPECT_TRUE(fMenu.ItemAt(0)->IsMarked());
    fMenu.ItemAt(0)->SetMarked(false);
    fMenu.ItemAt(0)->Invoke();
    EXPECT_FALSE(fMenu.ItemAt(0)->IsMarked()) << "only radio mode marks what is chosen";
}

TEST_F(MenuTest, TheLabelOfASubmenuCanFollowItsMark)
{
    auto* submenu = new BPopUpMenu("mode");
    submenu->AddItem(Item("Chart"));
    submenu->AddItem(Item("Gauge"));
    fMenu.AddItem(submenu);
    EXPECT_STREQ(fMenu.ItemAt(0)->Label(), "mode");
    submenu->ItemAt(1)->SetMarked(true);
    EXPECT_STREQ(fMenu.ItemAt(0)->Label(), "Gauge");
    submenu->ItemAt(1)->SetLabel("Gauges");
    EXPECT_STREQ(fMenu.ItemAt(0)->Label(), "Gauges");
}

TEST_F(MenuTest, DisablingReachesDown)
{
    auto* submenu = new BMenu("sub");
    fMenu.AddItem(submenu);
    submenu->AddItem(Item("deep"));
    EXPECT_TRUE(submenu->ItemAt(0)->IsEnabled());
    fMenu.SetEnabled(false);
    EXPECT_FALSE(submenu->ItemAt(0)->IsEnabled());
    EXPECT_EQ(submenu->ItemAt(0)->Invoke(), B_NOT_ALLOWED);
    fMenu.SetEnabled(true);
    fMenu.ItemAt(0)->SetEnabled(false);
    EXPECT_FALSE(submenu->IsEnabled());
}
