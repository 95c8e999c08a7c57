// SPDX-License-Identifier: MIT
#include "kits/support/List.h"

#include <algorithm>
#include <new>

BList::BList(int32 blockSize)
{
    if (blockSize > 0)
        fItems.reserve(static_cast<size_t>(blockSize));
}

BList::~BList() = default;

bool BList::AddItem(void* item)
{
    return AddItem(item, CountItems());
}

bool BList::AddItem(void* item, int32 index)
{
    if (index < 0 || index > CountItems())
        return false;
    try {
        fItems.insert(fItems.begin() + index, item);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

bool BList::AddList(const BList* items)
{
    if (items == nullptr)
        return false;
    try {
        const std::vector<void*> added = items->fItems;
        fItems.insert(fItems.end(), added.begin(), added.end());
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

bool BList::RemoveItem(const void* item)
{
    const int32 index = IndexOf(item);
    if (index < 0)
        return false;
    RemoveItem(index);
    return true;
}

void* BList::RemoveItem(int32 index)
{
    if (index < 0 || index >= CountItems())
        return nullptr;
    void* item = ItemAt(index);
    fItems.erase(fItems.begin() + index);
    return item;
}

void BList::MakeEmpty()
{
    fItems.clear();
}

void* BList::ItemAt(int32 index) const
{
    return index >= 0 && index < CountItems() ? fItems[static_cast<size_t>(index)] : nullptr;
}

void* BList::FirstItem() const
{
    return ItemAt(0);
}

void* BList::LastItem() const
{
    return ItemAt(CountItems() - 1);
}

int32 BList::IndexOf(const void* item) const
{
    const auto found = std::find(fItems.begin(), fItems.end(), item);
    return found != fItems.end() ? static_cast<int32>(found - fItems.begin()) : -1;
}

bool BList::HasItem(const void* item) const
{
    return IndexOf(item) >= 0;
}

int32 BList::CountItems() const
{
    return static_cast<int32>(fItems.size());
}

bool BList::IsEmpty() const
{
    return fItems.empty();
}
