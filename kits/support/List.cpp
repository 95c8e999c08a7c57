// SPDX-License-Identifier: MIT
#include "kits/support/List.h"

#include <algorithm>
#include <new>

BList::BList(int32 blockSize)
{
    if (blockSize > 0)
        fItems.reserve(static_cast<size_t>(blockSize));
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

bool BList::RemoveItem(const void* item)
{
    const auto found = std::find(fItems.begin(), fItems.end(), item);
    if (found == fItems.end())
        return false;
    fItems.erase(found);
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

void* BList::ItemAt(int32 index) const
{
    return index >= 0 && index < CountItems() ? fItems[static_cast<size_t>(index)] : nullptr;
}
