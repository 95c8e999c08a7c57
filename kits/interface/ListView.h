// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Invoker.h"
#include "kits/interface/ListItem.h"
#include "kits/interface/ScrollView.h"

#include <memory>

namespace kits {
class ListModel;
class ListWidget;
} // namespace kits

/// A column of rows of which the user selects and chooses one, or drags it.
///
/// By mouse: a press selects, a double click chooses, and dragging a row calls InitiateDrag. By keyboard: the arrow
/// keys, page keys, Home and End move, typing letters goes to the next row that begins with them, and Enter chooses.
/// Choosing sends the message of the list; a change of the selection by the user sends the selection message. In an
/// outline list a selected row counts only while it is shown, so collapsing the row above it is such a change. Copies
/// of both messages get "when" (int64), "source" (pointer to the list) and, if a row is selected, its "index" (int32).
/// A list without a target takes its window as the target when it is attached.
///
/// The list owns its items. Rows are numbered from 0; in an outline list, these methods see only the rows that are not
/// hidden under a collapsed one. Methods may be called from any thread under the looper lock.
class BListView : public kits::ScrollTarget, public BInvoker {
public:
    BListView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
              uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);
    ~BListView() override;

    void AttachedToWindow() override;

    /// Adds an item at the end or before the row at `index`; the list owns it from here.
    /// @return false, and the item stays the caller's, for null, for an item that is in the list, or for a bad index
    virtual bool AddItem(BListItem* item);
    virtual bool AddItem(BListItem* item, int32 index);
    /// Removes and deletes all items.
    virtual void MakeEmpty();

    /// Null, or -1, if there is none.
    BListItem* ItemAt(int32 index) const;
    int32 IndexOf(const BListItem* item) const;
    int32 CountItems() const; ///< for tests
    bool IsEmpty() const { return CountItems() == 0; }

    /// Selects a row instead of the one that is selected. Sends no message.
    void Select(int32 index);
    void DeselectAll();
    /// Returns the index of the selected row; -1 if there is none.
    int32 CurrentSelection() const;
    /// Scrolls so that the selected row is visible.
    void ScrollToSelection();

    /// The place of a row in the coordinates of the view: scrolling changes it. An invalid rectangle for a bad index,
    /// before the list has been attached, and on another thread than the main one.
    BRect ItemFrame(int32 index) const;

    virtual void SetInvocationMessage(BMessage* message) { SetMessage(message); }
    /// Owned from here; replaces (and deletes) the previous one; null removes it.
    virtual void SetSelectionMessage(BMessage* message);
    BMessage* SelectionMessage() const { return fSelectionMessage.get(); } ///< for tests

    /// Sends `message` or the invocation message, as described above.
    status_t Invoke(BMessage* message = nullptr) override;

    /// Hook: the user drags a row: begin a drag here (BView::DragMessage).
    /// @param where        where the row was pressed, in the coordinates of the view
    /// @param wasSelected  whether the row was selected before that press
    /// @return true if a drag was begun
    virtual bool InitiateDrag(BPoint /*where*/, int32 /*index*/, bool /*wasSelected*/) { return false; }

protected:
    /// Whether rows have marks that expand and collapse them.
    virtual bool IsOutline() const { return false; }
    /// Updates the rows on the screen in the next turn of the event loop.
    void RowsChanged();

    std::unique_ptr<kits::ListModel> fModel;

private:
    friend class kits::ListWidget;

    QWidget* MakeWidget() override;
    /// A list keeps the colours of the theme, whatever lies around it.
    void ViewColorChanged() override {}
    void UpdateWidget() override;
    /// Returns the widget, up to date; null on other threads and while there is none.
    kits::ListWidget* FreshWidget() const;

    /// Makes this the only selected item; null: none is.
    void SelectOnly(BListItem* item);
    void UserSelected(BListItem* item);
    void RowOpened(BListItem* item, bool open);
    status_t Send(const BMessage* message);

    std::unique_ptr<BMessage> fSelectionMessage;
    bool fUpdatePending = false;
};
