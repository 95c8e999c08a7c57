// SPDX-License-Identifier: MIT
#include "kits/support/List.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

int sValues[10];

void* Item(int index)
{
    return &sValues[index];
}

/// Returns the numbers of the list's items.
std::vector<int> Numbers(const BList& list)
{
    std::vector<int> numbers;
    for (int32 i = 0; i < list.CountItems(); ++i)
        numbers.push_back(static_cast<int>(static_cast<int*>(list.ItemAt(i)) - sValues));
    return numbers;
}

} // namespace

TEST(ListTest, BeginsEmpty)
{
    const BList list;
    EXPECT_EQ(list.CountItems(), 0);
    EXPECT_EQ(list.FirstItem(), nullptr);
    EXPECT_EQ(list.LastItem(), nullptr);
    EXPECT_EQ(list.ItemAt(0), nullptr);
    EXPECT_EQ(list.ItemAt(-1), nullptr);
}

TEST(ListTest, AddsAtTheEndAndInBetween)
{
    BList list(1);
    EXPECT_TRUE(list.AddItem(Item(1), 0));
    EXPECT_TRUE(list.AddItem(Item(2), 1));
    EXPECT_TRUE(list.AddItem(Item(0), 0));
    EXPECT_FALSE(list.AddItem(Item(3), 4));
    EXPECT_FALSE(list.AddItem(Item(3), -1));
    EXPECT_EQ(Numbers(list), (std::vector{0, 1, 2}));
    EXPECT_EQ(list.FirstItem(), Item(0));
    EXPECT_EQ(list.LastItem(), Item(2));
}

TEST(ListTest, Removes)
{
    BList list(-5);
    for (int i : {0, 1, 2, 1})
        list.AddItem(Item(i), list.CountItems());
    EXPECT_TRUE(list.RemoveItem(Item(1)));
    EXPECT_EQ(Numbers(list), (std::vector{0, 2, 1}));
    EXPECT_FALSE(list.RemoveItem(Item(7)));
    EXPECT_EQ(list.RemoveItem(int32{2}), Item(1));
    EXPECT_EQ(list.RemoveItem(int32{2}), nullptr);
    EXPECT_EQ(list.RemoveItem(int32{-1}), nullptr);
    EXPECT_EQ(Numbers(list), (std::vector{0, 2}));
}
