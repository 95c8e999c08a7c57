// SPDX-License-Identifier: MIT
#include "kits/interface/controls/ListWidget.h"

#include "kits/interface/Clipboard.h"
#include "kits/interface/ListView.h"
#include "kits/interface/core/ViewPrivate.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace kits {

ListWidget::ListWidget(BListView* owner, bool outline)
    : fOwner(owner)
{
    setHeaderHidden(true);
    header()->setStretchLastSection(true);
    setUniformRowHeights(true);
    setRootIsDecorated(outline);
    setItemsExpandable(outline);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setModel(&fRows);
    connect(
        this, &QTreeView::expanded, this, [this](const QModelIndex& index) { RowOpened(index, true); });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex& index) { RowOpened(index, false); });
    fRefreshing = false;
}

void ListWidget::RefreshRows()
{
    const ListModel& model = *fOwner->fModel;
    if (fRows.Version() == model.Version())
        return;
    const QScopedValueRollback<bool> silent(fRefreshing, true);
    const int scrolled = verticalScrollBar()->value();
    fRows.Take(model);
    for (int32 full = 0; full < model.CountFull(); full++) {
        const QModelIndex index = fRows.IndexOfFull(full);
        if (fRows.rowCount(index) > 0)
            setExpanded(index, model.FullAt(full)->IsExpanded());
    }
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(scrolled);
    RefreshSelection();
}

void ListWidget::RefreshSelection()
{
    const QScopedValueRollback<bool> silent(fRefreshing, true);
    const ListModel& model = *fOwner->fModel;
    QModelIndex selected;
    for (int32 full = 0; full < model.CountFull(); full++)
        if (model.FullAt(full)->IsSelected())
            selected = fRows.IndexOfFull(full);
    selectionModel()->select(QItemSelection(selected, selected), QItemSelectionModel::ClearAndSelect);
    if (selected.isValid())
        selectionModel()->setCurrentIndex(selected, QItemSelectionModel::NoUpdate);
}

QModelIndex ListWidget::IndexOfShown(int32 shown) const
{
    const std::vector<BListItem*>& rows = fOwner->fModel->Shown();
    if (shown < 0 || shown >= static_cast<int32>(rows.size()))
        return {};
    return fRows.IndexOfFull(fOwner->fModel->FullIndexOf(rows[static_cast<std::size_t>(shown)]));
}

BListItem* ListWidget::ItemOf(const QModelIndex& index) const
{
    if (!index.isValid() || fRows.Version() != fOwner->fModel->Version())
        return nullptr;
    return fOwner->fModel->FullAt(ListRows::FullOf(index));
}

QRect ListWidget::ShownRect(int32 shown)
{
    const QRect rect = visualRect(IndexOfShown(shown));
    return rect.isValid()
               ? QRect(viewport()->mapTo(this, QPoint(0, rect.top())), QSize(viewport()->width(), rect.height()))
               : QRect();
}

void ListWidget::ScrollTo(int32 shown)
{
    scrollTo(IndexOfShown(shown));
}

void ListWidget::RowOpened(const QModelIndex& index, bool open)
{
    BListItem* item = ItemOf(index);
    if (item == nullptr || fRefreshing)
        return;
    fOwner->RowOpened(item, open);
    // Only the expansion has changed, and Qt shows that already.
    fRows.SetVersion(fOwner->fModel->Version());
}

void ListWidget::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    if (fRefreshing)
        return;
    const QModelIndexList rows = selectionModel()->selectedIndexes();
    fOwner->UserSelected(rows.isEmpty() ? nullptr : ItemOf(rows.first()));
}

bool ListWidget::event(QEvent* event)
{
    const bool result = QTreeView::event(event);
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    if (event->type() == QEvent::Paint && hasFocus()) {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    return result;
}

void ListWidget::mousePressEvent(QMouseEvent* event)
{
    const QPoint place = event->position().toPoint();
    const QModelIndex index = indexAt(place);
    fPress.reset();
    if (index.isValid())
        fPress = Press{place, ListRows::FullOf(index), selectionModel()->isSelected(index), false};
    QTreeView::mousePressEvent(event);
}

void ListWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!fPress || event->buttons() == Qt::NoButton) {
        QTreeView::mouseMoveEvent(event);
        return;
    }
    if (fPress->dragged)
        return;
    const QPoint way = event->position().toPoint() - fPress->place;
    if (way.manhattanLength() < QApplication::startDragDistance())
        return;
    fPress->dragged = true;
    const BListItem* item = ItemOf(fRows.IndexOfFull(fPress->full));
    if (item == nullptr)
        return;
    const BPoint where = FromQPoint(viewport()->mapTo(this, fPress->place));
    fOwner->InitiateDrag(where, fOwner->fModel->ShownIndexOf(item), fPress->wasSelected);
}

void ListWidget::mouseReleaseEvent(QMouseEvent* event)
{
    fPress.reset();
    QTreeView::mouseReleaseEvent(event);
}

void ListWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && index.isValid() && fRows.rowCount(index) == 0)
        fOwner->Invoke();
}

void ListWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (fOwner->CurrentSelection() >= 0)
            fOwner->Invoke();
        return;
    }
    // Rows that stand for more than their text are copied as that.
    if (event->matches(QKeySequence::Copy) && CopyFrom(fOwner))
        return;
    QTreeView::keyPressEvent(event);
}

} // namespace kits
