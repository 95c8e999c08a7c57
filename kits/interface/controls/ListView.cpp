// SPDX-License-Identifier: MIT
#include "kits/interface/ListView.h"

#include "kits/application/MainThread.h"
#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "kits/interface/controls/ListModel.h"
#include "kits/interface/controls/ListWidget.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/kernel/Clock.h"

#include <QTimer>

#include <algorithm>

BListView::BListView(BRect frame, const char* name, uint32 resizingMode, uint32 flags)
    : ScrollTarget(frame, name, resizingMode, flags)
    , BInvoker(nullptr, static_cast<const BHandler*>(nullptr))
    , fModel(std::make_unique<kits::ListModel>())
{
}

BListView::~BListView()
{
    // The widget refers to the model.
    fContent.reset();
}

void BListView::AttachedToWindow()
{
    if (BInvoker::Messenger() == BMessenger())
        SetTarget(Window());
}

bool BListView::AddItem(BListItem* item)
{
    return AddItem(item, fModel->CountFull());
}

bool BListView::AddItem(BListItem* item, int32 index)
{
    if (item == nullptr || item->fInList || !fModel->Insert(item, index))
        return false;
    item->fInList = true;
    RowsChanged();
    return true;
}

void BListView::MakeEmpty()
{
    fModel->MakeEmpty();
    RowsChanged();
}

BListItem* BListView::ItemAt(int32 index) const
{
    const std::vector<BListItem*>& shown = fModel->Shown();
    return index < 0 || index >= static_cast<int32>(shown.size()) ? nullptr : shown[static_cast<std::size_t>(index)];
}

int32 BListView::IndexOf(const BListItem* item) const
{
    return fModel->ShownIndexOf(item);
}

int32 BListView::CountItems() const
{
    return static_cast<int32>(fModel->Shown().size());
}

void BListView::SelectOnly(BListItem* item)
{
    for (int32 i = 0; i < fModel->CountFull(); i++)
        fModel->FullAt(i)->fSelected = fModel->FullAt(i) == item;
}

void BListView::Select(int32 index)
{
    BListItem* item = ItemAt(index);
    if (item == nullptr || !item->IsEnabled())
        return;
    SelectOnly(item);
    WidgetNeedsUpdate();
}

void BListView::DeselectAll()
{
    SelectOnly(nullptr);
    WidgetNeedsUpdate();
}

int32 BListView::CurrentSelection() const
{
    const std::vector<BListItem*>& shown = fModel->Shown();
    const auto found =
        std::find_if(shown.begin(), shown.end(), [](const BListItem* item) { return item->IsSelected(); });
    return found == shown.end() ? -1 : static_cast<int32>(found - shown.begin());
}

void BListView::ScrollToSelection()
{
    if (fContent == nullptr || CurrentSelection() < 0)
        return;
    kits::RunOnMain(this, [this] { FreshWidget()->ScrollTo(CurrentSelection()); });
}

BRect BListView::ItemFrame(int32 index) const
{
    kits::ListWidget* widget = FreshWidget();
    const QRect rect = widget == nullptr || ItemAt(index) == nullptr ? QRect() : widget->ShownRect(index);
    return rect.isValid() ? kits::FromQRect(rect) : BRect();
}

void BListView::SetSelectionMessage(BMessage* message)
{
    fSelectionMessage.reset(message);
}

status_t BListView::Invoke(BMessage* message)
{
    return Send(message != nullptr ? message : Message());
}

status_t BListView::Send(const BMessage* message)
{
    if (message == nullptr)
        return B_BAD_VALUE;
    BMessage copy(*message);
    kits::kWhenField.Add(&copy, system_time());
    kits::kSourceField.Add(&copy, this);
    if (CurrentSelection() >= 0)
        kits::kIndexField.Add(&copy, CurrentSelection());
    return BInvoker::Invoke(&copy);
}

void BListView::UserSelected(BListItem* item)
{
    SelectOnly(item);
    Send(fSelectionMessage.get());
}

void BListView::RowOpened(BListItem* item, bool open)
{
    const bool hadSelection = CurrentSelection() >= 0;
    item->fExpanded = open;
    fModel->Changed();
    if (hadSelection != (CurrentSelection() >= 0))
        Send(fSelectionMessage.get());
}

QWidget* BListView::MakeWidget()
{
    return new kits::ListWidget(this, IsOutline());
}

kits::ListWidget* BListView::FreshWidget() const
{
    if (fContent == nullptr || !kits::IsMainThread())
        return nullptr;
    auto* widget = fContent->As<kits::ListWidget>();
    widget->RefreshRows();
    return widget;
}

void BListView::UpdateWidget()
{
    ScrollTarget::UpdateWidget();
    auto* widget = fContent->As<kits::ListWidget>();
    widget->RefreshRows();
    widget->RefreshSelection();
}

void BListView::RowsChanged()
{
    // Rows come in hundreds, so they are shown together, in the next turn of the event loop.
    if (fContent == nullptr || fUpdatePending)
        return;
    fUpdatePending = true;
    kits::RunOnMain(this, [this] {
        QTimer::singleShot(0, fContent.get(), [this] {
            fUpdatePending = false;
            UpdateWidget();
        });
    });
}
