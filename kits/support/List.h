// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <vector>

/// An ordered list of pointers. It owns nothing but its own array: the items belong to the code that adds them.
/// Indices run from 0. A copy holds the same pointers. Not for two threads at once.
class BList {
public:
    /// @param blockSize  initial room; the list grows as needed
    explicit BList(int32 blockSize = 20);
    BList(const BList& other) = default;
    BList(BList&& other) = default;
    BList& operator=(const BList& other) = default;
    BList& operator=(BList&& other) = default;
    virtual ~BList() = default;

    /// Inserts before the item at `index`, up to `CountItems()`. Returns false for another index or without memory.
    bool AddItem(void* item, int32 index);

    /// Removes the first occurrence. Returns false if there is none.
    bool RemoveItem(const void* item);
    /// Removes the item at an index and returns it; null for a bad index.
    void* RemoveItem(int32 index);

    /// Null for a bad index, or for an empty list in the next two.
    [[nodiscard]] void* ItemAt(int32 index) const;
    [[nodiscard]] void* FirstItem() const { return ItemAt(0); }
    [[nodiscard]] void* LastItem() const { return ItemAt(CountItems() - 1); }
    [[nodiscard]] int32 CountItems() const { return static_cast<int32>(fItems.size()); }

private:
    std::vector<void*> fItems;
};
