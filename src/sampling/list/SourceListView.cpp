// SPDX-License-Identifier: MIT
#include "src/sampling/list/SourceListView.h"

#include "kits/application/Message.h"
#include "kits/kernel/SystemInfo.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

void AddSource(BMessage* message, const SourceListItem& item)
{
    BMessage archive;
    ValueProvider(item.Target(), item.Flags()).Archive(&archive);
    kDraggedSourceField.Add(message, archive);
}

} // namespace

SourceListItem::SourceListItem(vptarget_t target, int32 flags)
    : BStringItem("")
    , fKey{target, flags}
{
    SetText(SourceName(target, flags).c_str());
}

SourceListView::SourceListView()
    : BOutlineListView(BRect(0, 0, 100, 100), "", B_FOLLOW_ALL_SIDES)
{
    system_info info = {};
    get_system_info(&info);
    fProcessors = std::clamp<int32>(info.cpu_count, 0, kits::kMaxProcessors);
    Fill();
}

void SourceListView::SetFilter(const char* text)
{
    SourceFilter filter(text);
    if (filter == fFilter)
        return;
    if (fFilter.IsEmpty())
        KeepState();
    fFilter = std::move(filter);
    MakeEmpty();
    Fill();
    if (fFilter.IsEmpty())
        RestoreState();
    else
        SelectBestSource();
    ScrollToSelection();
}

void SourceListView::KeepState()
{
    const BListItem* selected = ItemAt(CurrentSelection());
    fSelectedRow = FullListIndexOf(selected);
    fCollapsedRows.clear();
    for (int32 i = 0; i < FullListCountItems(); i++)
        if (!IsExpanded(i))
            fCollapsedRows.push_back(i);
}

void SourceListView::RestoreState()
{
    for (const int32 row : fCollapsedRows)
        Collapse(FullListItemAt(row));
    Select(IndexOf(FullListItemAt(fSelectedRow)));
}

void SourceListView::SelectBestSource()
{
    int32 best = -1;
    std::pair<int, bool> bestFit;
    for (int32 i = 0; auto* item = dynamic_cast<SourceListItem*>(ItemAt(i)); i++) {
        if (item->Target() == VP_NONE)
            continue;
        const BListItem* group = Superitem(item);
        const std::pair<int, bool> fit(fFilter.FitOf(item->Text(), group != nullptr ? group->Text() : ""),
                                       (item->Flags() & VP_EXP_AVERAGE) == 0);
        if (best < 0 || fit > bestFit) {
            best = i;
            bestFit = fit;
        }
    }
    Select(best);
}

void SourceListView::Fill()
{
    for (const SourceKey& key : MachineSources()) {
        auto item = std::make_unique<SourceListItem>(key.target, key.flags);
        if (fFilter.FitOf(item->Text()) != SourceFilter::kNone)
            AddItem(item.release());
    }
    for (const ProcessorGroup& group : ProcessorGroups())
        AddGroup(group);
}

void SourceListView::AddGroup(const ProcessorGroup& group)
{
    auto header = std::make_unique<SourceListItem>(VP_NONE, 0);
    header->SetText(Tr(group.name));
    SourceListItem* superitem = nullptr;
    for (int32 processor = fProcessors - 1; processor >= 0; processor--) {
        for (const SourceKey& key : group.Sources(processor)) {
            auto item = std::make_unique<SourceListItem>(key.target, key.flags);
            if (fFilter.FitOf(item->Text(), Tr(group.name)) == SourceFilter::kNone)
                continue;
            if (superitem == nullptr) {
                superitem = header.release();
                AddItem(superitem);
            }
            // Each goes above the existing ones.
            AddUnder(item.release(), superitem);
        }
    }
}

bool SourceListView::AddSourcesTo(BMessage* message, int32 index) const
{
    auto* row = dynamic_cast<SourceListItem*>(ItemAt(index));
    if (row == nullptr)
        return false;
    message->what = MSG_SOURCE_DROP;
    if (row->Target() != VP_NONE) {
        AddSource(message, *row);
        return true;
    }
    for (int32 i = 0; auto* item = dynamic_cast<SourceListItem*>(ItemUnderAt(row, true, i)); i++)
        AddSource(message, *item);
    return true;
}

bool SourceListView::InitiateDrag(BPoint, int32 index, bool)
{
    BMessage message;
    if (!AddSourcesTo(&message, index))
        return false;
    DragMessage(&message, ItemFrame(index), nullptr);
    return true;
}

bool SourceListView::CopyRequested(BMessage* message)
{
    return AddSourcesTo(message, CurrentSelection());
}
