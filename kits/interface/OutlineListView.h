// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/ListView.h"

/// A list whose rows may have rows under them, which the user expands and collapses with the mark before the row, by
/// double click, or with the right and left arrow keys.
///
/// A row's level gives its position: the rows under it are those that follow it with a higher level. The methods of
/// BListView count only the rows that are shown; methods named "full list" count all.
class BOutlineListView : public BListView {
public:
    using BListView::BListView;

    /// Adds the item as the first one directly under `superitem`, one level deeper; if `superitem` is null, as the last
    /// of all, at level 0. The list owns it from here.
    /// @return false, and the item stays the caller's, if it is null or in the list, or `superitem` is not in the list
    virtual bool AddUnder(BListItem* item, BListItem* superitem);

    BListItem* FullListItemAt(int32 index) const;
    int32 FullListIndexOf(const BListItem* item) const;
    int32 FullListCountItems() const;

    /// Returns row number `index` under `superitem`, or of the outermost level if that is null; null if there is none.
    /// @param oneLevelOnly  counts only rows directly under it, otherwise all the way down
    BListItem* ItemUnderAt(BListItem* superitem, bool oneLevelOnly, int32 index) const;
    /// Returns the row above `item` in the hierarchy; null for the outermost level.
    BListItem* Superitem(const BListItem* item) const;

    void Collapse(BListItem* item);
    bool IsExpanded(int32 fullListIndex) const;

private:
    bool IsOutline() const override { return true; }
    /// Returns the full number of the first row under it, and of the first one after those.
    int32 FirstUnder(const BListItem* superitem, int32* end) const;
};
