// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/ListItem.h"

#include <memory>
#include <vector>

namespace kits {

/// The rows of a list, all of them and the visible ones. Full numbers count all rows. Needs no toolkit.
class ListModel {
public:
    int32 CountFull() const { return static_cast<int32>(fItems.size()); }
    BListItem* FullAt(int32 full) const;
    /// -1 if it is not here.
    int32 FullIndexOf(const BListItem* item) const;

    /// The rows that are not hidden under a collapsed row, from the top.
    const std::vector<BListItem*>& Shown() const;
    /// -1 if it is not here or hidden.
    int32 ShownIndexOf(const BListItem* item) const;

    /// @param full  0 to CountFull(); for any other number, does nothing and returns false
    bool Insert(BListItem* item, int32 full);
    void MakeEmpty();

    /// The row after the last one under this one.
    int32 EndOfUnder(int32 full) const;
    /// The row above this one in the hierarchy; -1 for the outermost level.
    int32 ParentOf(int32 full) const;

    /// Call it after a row was expanded or collapsed, or its text changed.
    void Changed();
    /// Differs after every change.
    uint64 Version() const { return fVersion; }

private:
    std::vector<std::unique_ptr<BListItem>> fItems;
    mutable std::vector<BListItem*> fShown;
    mutable bool fShownIsOld = false;
    uint64 fVersion = 1;
};

} // namespace kits
