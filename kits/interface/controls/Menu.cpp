// SPDX-License-Identifier: MIT
#include "kits/interface/Menu.h"

#include "kits/application/Messenger.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/controls/MenuPart.h"
#include "kits/interface/core/ViewPrivate.h"

#include <algorithm>
#include <string_view>

BMenu::BMenu(const char* name, menu_layout)
    : BView(BRect(0, 0, 0, 0), name, B_FOLLOW_NONE, 0)
{
}

BMenu::~BMenu()
{
    fPart.reset();
    for (const auto& item : fItems)
        item->fMenu = nullptr;
}

bool BMenu::AddItem(BMenuItem* item)
{
    return AddItem(item, CountItems());
}

bool BMenu::AddItem(BMenuItem* item, int32 index)
{
    if (item == nullptr || item->fMenu != nullptr || index < 0 || index > CountItems())
        return false;
    fItems.insert(fItems.begin() + index, std::unique_ptr<BMenuItem>(item));
    item->fMenu = this;
    if (item->IsMarked())
        ItemMarked(item);
    NeedsUpdate();
    return true;
}

bool BMenu::AddItem(BMenu* submenu)
{
    return AddItem(submenu, CountItems());
}

bool BMenu::AddItem(BMenu* submenu, int32 index)
{
    if (submenu == nullptr || submenu->fSuperitem != nullptr || index < 0 || index > CountItems())
        return false;
    return AddItem(new BMenuItem(submenu), index);
}

bool BMenu::AddSeparatorItem()
{
    return AddItem(new BSeparatorItem);
}

bool BMenu::RemoveItem(BMenuItem* item)
{
    return RemoveItem(IndexOf(item)) != nullptr;
}

BMenuItem* BMenu::RemoveItem(int32 index)
{
    if (index < 0 || index >= CountItems())
        return nullptr;
    BMenuItem* item = fItems[static_cast<std::size_t>(index)].release();
    fItems.erase(fItems.begin() + index);
    item->fMenu = nullptr;
    if (fPart != nullptr)
        fPart->Forget(item);
    NeedsUpdate();
    return item;
}

BMenuItem* BMenu::ItemAt(int32 index) const
{
    return index < 0 || index >= CountItems() ? nullptr : fItems[static_cast<std::size_t>(index)].get();
}

BMenu* BMenu::SubmenuAt(int32 index) const
{
    const BMenuItem* item = ItemAt(index);
    return item == nullptr ? nullptr : item->Submenu();
}

int32 BMenu::IndexOf(const BMenuItem* item) const
{
    const auto found = std::find_if(fItems.begin(), fItems.end(), [&](const auto& each) { return each.get() == item; });
    return found == fItems.end() ? -1 : static_cast<int32>(found - fItems.begin());
}

BMenuItem* BMenu::FindItem(const char* label) const
{
    if (label == nullptr)
        return nullptr;
    return Find(
        [label](const BMenuItem& item) { return item.Label() == std::string_view(label) && !item.IsSeparator(); });
}

BMenuItem* BMenu::FindItem(uint32 command) const
{
    return Find([command](const BMenuItem& item) { return item.Message() != nullptr && item.Command() == command; });
}

BMenuItem* BMenu::Find(const std::function<bool(const BMenuItem&)>& matches) const
{
    for (const auto& item : fItems) {
        if (matches(*item))
            return item.get();
        BMenuItem* below = item->Submenu() == nullptr ? nullptr : item->Submenu()->Find(matches);
        if (below != nullptr)
            return below;
    }
    return nullptr;
}

BMenuItem* BMenu::FindMarked() const
{
    const auto found = std::find_if(fItems.begin(), fItems.end(), [](const auto& each) { return each->IsMarked(); });
    return found == fItems.end() ? nullptr : found->get();
}

void BMenu::SetEnabled(bool enabled)
{
    fEnabled = enabled;
    NeedsUpdate();
    if (fSuperitem != nullptr)
        fSuperitem->NeedsUpdate();
}

bool BMenu::IsEnabled() const
{
    return fEnabled && (fSuperitem == nullptr || fSuperitem->IsEnabled());
}

void BMenu::SetRadioMode(bool on)
{
    fRadioMode = on;
    NeedsUpdate();
}

void BMenu::SetLabelFromMarked(bool on)
{
    fLabelFromMarked = on;
    BMenuItem* marked = FindMarked();
    if (on && marked != nullptr)
        ItemMarked(marked);
}

BMenu* BMenu::Supermenu() const
{
    return fSuperitem == nullptr ? nullptr : fSuperitem->Menu();
}

void BMenu::NeedsUpdate()
{
    if (fPart != nullptr) {
        kits::RunOnMain(
            this,
            [this] {
                if (fPart != nullptr)
                    fPart->Update();
            });
    }
    if (fField != nullptr)
        fField->WidgetNeedsUpdate();
}

void BMenu::ItemMarked(BMenuItem* item)
{
    if (fRadioMode) {
        for (const auto& other : fItems)
            if (other.get() != item)
                other->fMarked = false;
    }
    if (fLabelFromMarked && fSuperitem != nullptr)
        fSuperitem->SetLabel(item->Label());
}
