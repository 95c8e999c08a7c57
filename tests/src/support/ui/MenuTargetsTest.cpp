// SPDX-License-Identifier: MIT
#include "src/support/ui/MenuTargets.h"

#include "kits/application/Looper.h"
#include "kits/application/Message.h"
#include "kits/interface/Menu.h"
#include "kits/interface/MenuItem.h"

#include <gtest/gtest.h>

#include <cstdlib>

TEST(MenuTargets, ReachEveryItemOfEverySubmenu)
{
    BLooper target;
    BMenu menu("outer");
    auto* middle = new BMenu("middle");
    auto* inner = new BMenu("inner");
    menu.AddItem(new BMenuItem("one", new BMessage(1)));
    menu.AddSeparatorItem();
    menu.AddItem(middle);
    middle->AddItem(new BMenuItem("two", new BMessage(2)));
    middle->AddItem(inner);
    inner->AddItem(new BMenuItem("three", new BMessage(3)));
    menu.AddItem(new BMenuItem("four", new BMessage(4)));

    SetTargetForItemsRecursive(&menu, &target);
    for (const BMenuItem* item :
         {menu.ItemAt(0), menu.ItemAt(2), menu.ItemAt(3), middle->ItemAt(0), middle->ItemAt(1), inner->ItemAt(0)})
        EXPECT_EQ(item->Messenger().Target(nullptr), &target) << item->Label();
}

TEST(MenuTargets, DoNothingWithoutAMenu)
{
    BLooper target;
    const auto setAndEnd = [&target] {
        SetTargetForItemsRecursive(nullptr, &target);
        std::_Exit(0);
    };
    EXPECT_EXIT(setAndEnd(), testing::ExitedWithCode(0), "");
}
