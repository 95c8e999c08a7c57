#include "src/sampling/SourceListView.h"

#include "kits/application/Message.h"
#include "kits/kernel/SystemInfo.h"
#include "src/sampling/SourceName.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"

#include <algorithm>
#include <memory>
#include <sstream>

namespace {

std::string LowerCase(std::string text)
{
    // Of plain letters; others are found as they are written.
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

bool HasAllWords(const std::string& name, const std::string& filter)
{
    const std::string text = LowerCase(name);
    std::istringstream words(filter);
    for (std::string word; words >> word;) {
        if (text.find(word) == std::string::npos)
            return false;
    }
    return true;
}

void AddSource(BMessage* message, const SourceListItem& item)
{
    BMessage archive;
    ValueProvider(item.Target(), item.Flags()).Archive(&archive);
    message->AddMessage("ValueProvider", &archive);
}

} // namespace

SourceListItem::SourceListItem(vptarget_t target, int32 flags)
    : BStringItem("")
    , fKey{target, flags}
{
    SetText(SourceName(target, flags).c_str());
}

SourceListView::SourceListView()
    : BOutlineListView(BRect(0, 0, 100, 100), "", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES)
{
    system_info info = {};
    get_system_info(&info);
    fProcessors = std::clamp<int32>(info.cpu_count, 0, kits::kMaxProcessors);
    Fill("");
}

void SourceListView::SetFilter(const char* text)
{
    std::string filter = LowerCase(text);
    if (filter == fFilter)
        return;
    fFilter = std::move(filter);
    MakeEmpty();
    Fill(fFilter);
    if (!fFilter.empty())
        SelectFirstSource();
}

void SourceListView::SelectFirstSource()
{
    for (int32 i = 0; auto* item = dynamic_cast<SourceListItem*>(ItemAt(i)); i++) {
        if (item->Target() != VP_NONE) {
            Select(i);
            return;
        }
    }
}

void SourceListView::Fill(const std::string& filter)
{
    for (const SourceKey& key : MachineSources()) {
        auto item = std::make_unique<SourceListItem>(key.target, key.flags);
        if (HasAllWords(item->Text(), filter))
            AddItem(item.release());
    }
    for (const ProcessorGroup& group : ProcessorGroups())
        AddGroup(group, filter);
}

void SourceListView::AddGroup(const ProcessorGroup& group, const std::string& filter)
{
    auto header = std::make_unique<SourceListItem>(VP_NONE, 0);
    header->SetText(Tr(group.name));
    SourceListItem* superitem = nullptr;
    for (int32 processor = fProcessors - 1; processor >= 0; processor--) {
        for (const SourceKey& key : group.Sources(processor)) {
            auto item = std::make_unique<SourceListItem>(key.target, key.flags);
            if (!HasAllWords(item->Text(), filter))
                continue;
            if (superitem == nullptr) {
                superitem = header.release();
                AddItem(superitem);
            }
            // Each goes above those that are there already.
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
