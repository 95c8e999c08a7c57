// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/controls/ListModel.h"

#include <QAbstractItemModel>
#include <QPersistentModelIndex>
#include <QTreeView>

#include <optional>
#include <vector>

class BListView;

namespace kits {

/// The rows of a list as they were at the last call of Take: a copy, so that Qt never meets a deleted item.
class ListRows : public QAbstractItemModel {
public:
    void Take(const ListModel& model);
    /// The model's version at the time of the copy.
    uint64 Version() const { return fVersion; }
    void SetVersion(uint64 version) { fVersion = version; }

    QModelIndex IndexOfFull(int32 full) const;
    static int32 FullOf(const QModelIndex& index) { return static_cast<int32>(index.internalId()); }

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Row {
        QString text;
        int parent = -1; ///< full number
        int place = 0;   ///< among the children of the parent
        bool enabled = true;
        std::vector<int> children; ///< full numbers
    };
    const std::vector<int>& ChildrenOf(const QModelIndex& parent) const;

    std::vector<Row> fRows;
    std::vector<int> fOutermost;
    uint64 fVersion = 0;
};

/// Qt's view of the list: notifies the list view of the user's actions, and follows its rows.
class ListWidget : public QTreeView {
public:
    /// @param outline  shows the marks that expand and collapse rows
    ListWidget(BListView* owner, bool outline);

    /// Updates the rows to those of the owner, and then their expansion and selection, if they differ. Does not notify
    /// the owner.
    void RefreshRows();
    void RefreshSelection();

    /// Returns the frame of a row, given its number among the visible ones, in the coordinates of this widget.
    QRect ShownRect(int32 shown);
    void ScrollTo(int32 shown);

protected:
    /// Draws the frame, if there is one, in the colour of the selection while the list has the focus.
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    struct Press {
        QPoint place; ///< in the viewport
        int32 full;
        bool wasSelected;
        bool dragged;
    };

    QModelIndex IndexOfShown(int32 shown) const;
    /// Returns the owner's item of a row, null if the owner's rows have changed since.
    BListItem* ItemOf(const QModelIndex& index) const;
    void RowOpened(const QModelIndex& index, bool open);

    BListView* fOwner;
    ListRows fRows;
    std::optional<Press> fPress;
    bool fRefreshing = true; ///< selections and expansions by Qt are not the user's now
};

} // namespace kits
