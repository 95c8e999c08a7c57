// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <vector>

/// An ordered list of pointers. It owns nothing but its own array: the items are the business of who puts them in.
/// Indices run from 0. A copy holds the same pointers. Not for two threads at once.
class BList {
public:
    /// @param blockSize  room to begin with; the list grows as needed
    explicit BList(int32 blockSize = 20);
    BList(const BList& other) = default;
    BList(BList&& other) = default;
    BList& operator=(const BList& other) = default;
    BList& operator=(BList&& other) = default;
    virtual ~BList();

    /// Appends. False if there is no memory; the list is then as before.
    bool AddItem(void* item);
    /// Inserts before what stands at `index`, up to `CountItems()`. False for another index or without memory.
    bool AddItem(void* item, int32 index);
    /// Appends all items of another list (or of this one).
    bool AddList(const BList* items);

    /// Takes the first occurrence out. False if there is none.
    bool RemoveItem(const void* item);
    /// Takes out what stands there and returns it, null for a bad index.
    void* RemoveItem(int32 index);
    /// Takes all out. Nothing is deleted.
    void MakeEmpty();

    /// Null for a bad index, as for an empty list in the next two.
    [[nodiscard]] void* ItemAt(int32 index) const;
    [[nodiscard]] void* FirstItem() const;
    [[nodiscard]] void* LastItem() const;

    /// The first index of the item, negative if it is not there.
    [[nodiscard]] int32 IndexOf(const void* item) const;
    [[nodiscard]] bool HasItem(const void* item) const;
    [[nodiscard]] int32 CountItems() const;
    [[nodiscard]] bool IsEmpty() const;

private:
    std::vector<void*> fItems;
};
