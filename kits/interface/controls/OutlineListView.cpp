// SPDX-License-Identifier: MIT
#include "kits/interface/OutlineListView.h"

#include "kits/interface/controls/ListModel.h"
#include "kits/interface/core/Content.h"

bool BOutlineListView::AddUnder(BListItem* item, BListItem* superitem)
{
    if (item == nullptr || item->fInList)
        return false;
    const int32 above = superitem == nullptr ? fModel->CountFull() - 1 : fModel->FullIndexOf(superitem);
    if (superitem != nullptr && above < 0)
        return false;
    item->fLevel = superitem == nullptr ? 0 : superitem->fLevel + 1;
    return AddItem(item, above + 1);
}

BListItem* BOutlineListView::FullListItemAt(int32 index) const
{
    return fModel->FullAt(index);
}

int32 BOutlineListView::FullListIndexOf(const BListItem* item) const
{
    return fModel->FullIndexOf(item);
}

int32 BOutlineListView::FullListCountItems() const
{
    return fModel->CountFull();
}

BListItem* BOutlineListView::ItemUnderAt(BListItem* superitem, bool oneLevelOnly, int32 index) const
{
    int32 end = 0;
    for (int32 i = FirstUnder(superitem, &end); i < end && index >= 0; i = oneLevelOnly ? fModel->EndOfUnder(i) : i + 1)
        if (index-- == 0)
            return fModel->FullAt(i);
    return nullptr;
}

int32 BOutlineListView::FirstUnder(const BListItem* superitem, int32* end) const
{
    const int32 above = superitem == nullptr ? -1 : fModel->FullIndexOf(superitem);
    if (superitem == nullptr)
        *end = fModel->CountFull();
    else
        *end = above < 0 ? 0 : fModel->EndOfUnder(above);
    return above + 1;
}

BListItem* BOutlineListView::Superitem(const BListItem* item) const
{
    const int32 full = fModel->FullIndexOf(item);
    return full < 0 ? nullptr : fModel->FullAt(fModel->ParentOf(full));
}

void BOutlineListView::Collapse(BListItem* item)
{
    if (fModel->FullIndexOf(item) < 0 || !item->fExpanded)
        return;
    item->fExpanded = false;
    fModel->Changed();
    RowsChanged();
}

bool BOutlineListView::IsExpanded(int32 fullListIndex) const
{
    const BListItem* item = fModel->FullAt(fullListIndex);
    return item != nullptr && item->IsExpanded();
}
