// SPDX-License-Identifier: MIT
#include "kits/interface/controls/ListWidget.h"
#include "kits/interface/core/Content.h"

namespace kits {

void ListRows::Take(const ListModel& model)
{
    beginResetModel();
    fRows.clear();
    fOutermost.clear();
    fVersion = model.Version();
    fRows.reserve(static_cast<std::size_t>(model.CountFull()));
    std::vector<int> above; // the possible parents of the next row, the innermost last
    for (int32 full = 0; full < model.CountFull(); full++) {
        const BListItem* item = model.FullAt(full);
        while (!above.empty() && model.FullAt(above.back())->OutlineLevel() >= item->OutlineLevel())
            above.pop_back();
        Row row;
        row.text = ToText(item->Text());
        row.enabled = item->IsEnabled();
        row.parent = above.empty() ? -1 : above.back();
        std::vector<int>& siblings = row.parent < 0 ? fOutermost : fRows[static_cast<std::size_t>(row.parent)].children;
        row.place = static_cast<int>(siblings.size());
        siblings.push_back(full);
        fRows.push_back(std::move(row));
        above.push_back(full);
    }
    endResetModel();
}

QModelIndex ListRows::IndexOfFull(int32 full) const
{
    if (full < 0 || full >= static_cast<int32>(fRows.size()))
        return {};
    return createIndex(fRows[static_cast<std::size_t>(full)].place, 0, static_cast<quintptr>(full));
}

const std::vector<int>& ListRows::ChildrenOf(const QModelIndex& parent) const
{
    return parent.isValid() ? fRows[parent.internalId()].children : fOutermost;
}

QModelIndex ListRows::index(int row, int column, const QModelIndex& parent) const
{
    const std::vector<int>& children = ChildrenOf(parent);
    if (column != 0 || row < 0 || row >= static_cast<int>(children.size()))
        return {};
    return createIndex(row, 0, static_cast<quintptr>(children[static_cast<std::size_t>(row)]));
}

QModelIndex ListRows::parent(const QModelIndex& child) const
{
    return child.isValid() ? IndexOfFull(fRows[child.internalId()].parent) : QModelIndex();
}

int ListRows::rowCount(const QModelIndex& parent) const
{
    return static_cast<int>(ChildrenOf(parent).size());
}

int ListRows::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant ListRows::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    return fRows[index.internalId()].text;
}

Qt::ItemFlags ListRows::flags(const QModelIndex& index) const
{
    if (!index.isValid() || !fRows[index.internalId()].enabled)
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

} // namespace kits
