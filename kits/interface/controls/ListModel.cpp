// SPDX-License-Identifier: MIT
#include "kits/interface/controls/ListModel.h"

#include <algorithm>

namespace kits {

BListItem* ListModel::FullAt(int32 full) const
{
    return full < 0 || full >= CountFull() ? nullptr : fItems[static_cast<std::size_t>(full)].get();
}

int32 ListModel::FullIndexOf(const BListItem* item) const
{
    const auto found = std::find_if(fItems.begin(), fItems.end(), [&](const auto& each) { return each.get() == item; });
    return found == fItems.end() ? -1 : static_cast<int32>(found - fItems.begin());
}

const std::vector<BListItem*>& ListModel::Shown() const
{
    if (fShownIsOld) {
        fShown.clear();
        for (int32 i = 0; i < CountFull();) {
            BListItem* item = FullAt(i);
            fShown.push_back(item);
            i = item->IsExpanded() ? i + 1 : EndOfUnder(i);
        }
        fShownIsOld = false;
    }
    return fShown;
}

int32 ListModel::ShownIndexOf(const BListItem* item) const
{
    const std::vector<BListItem*>& shown = Shown();
    const auto found = std::find(shown.begin(), shown.end(), item);
    return found == shown.end() ? -1 : static_cast<int32>(found - shown.begin());
}

bool ListModel::Insert(BListItem* item, int32 full)
{
    if (full < 0 || full > CountFull())
        return false;
    fItems.insert(fItems.begin() + full, std::unique_ptr<BListItem>(item));
    Changed();
    return true;
}

void ListModel::MakeEmpty()
{
    fItems.clear();
    Changed();
}

int32 ListModel::EndOfUnder(int32 full) const
{
    const int32 level = FullAt(full)->OutlineLevel();
    int32 end = full + 1;
    while (end < CountFull() && FullAt(end)->OutlineLevel() > level)
        end++;
    return end;
}

int32 ListModel::ParentOf(int32 full) const
{
    const int32 level = FullAt(full)->OutlineLevel();
    for (int32 i = full - 1; i >= 0; i--)
        if (FullAt(i)->OutlineLevel() < level)
            return i;
    return -1;
}

void ListModel::Changed()
{
    fShownIsOld = true;
    fVersion++;
}

} // namespace kits
