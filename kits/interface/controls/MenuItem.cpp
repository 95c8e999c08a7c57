// SPDX-License-Identifier: MIT
#include "kits/interface/MenuItem.h"

#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Menu.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/Window.h"
#include "kits/kernel/Clock.h"

BMenuItem::BMenuItem(const char* label, BMessage* message, char shortcut, uint32 modifiers)
    : BInvoker(message, static_cast<const BHandler*>(nullptr))
    , fLabel(label == nullptr ? "" : label)
    , fModifiers(modifiers)
    , fShortcut(shortcut)
{
}

BMenuItem::BMenuItem(BMenu* submenu, BMessage* message)
    : BInvoker(message, static_cast<const BHandler*>(nullptr))
    , fSubmenu(submenu)
{
    if (submenu == nullptr)
        return;
    fLabel = submenu->Name();
    submenu->fSuperitem = this;
    if (submenu->IsLabelFromMarked() && submenu->FindMarked() != nullptr)
        fLabel = submenu->FindMarked()->Label();
}

BMenuItem::~BMenuItem()
{
    if (fMenu != nullptr)
        fMenu->RemoveItem(this);
}

void BMenuItem::SetLabel(const char* label)
{
    fLabel = label == nullptr ? "" : label;
    if (fMenu != nullptr && fMarked)
        fMenu->ItemMarked(this);
    NeedsUpdate();
}

void BMenuItem::SetEnabled(bool enabled)
{
    fEnabled = enabled;
    NeedsUpdate();
}

bool BMenuItem::IsEnabled() const
{
    return fEnabled && (fMenu == nullptr || fMenu->IsEnabled());
}

void BMenuItem::SetMarked(bool marked)
{
    fMarked = marked;
    if (marked && fMenu != nullptr)
        fMenu->ItemMarked(this);
    NeedsUpdate();
}

char BMenuItem::Shortcut(uint32* modifiers) const
{
    if (modifiers != nullptr)
        *modifiers = fModifiers;
    return fShortcut;
}

status_t BMenuItem::Invoke(BMessage* message)
{
    if (!IsEnabled())
        return B_NOT_ALLOWED;
    if (fMenu != nullptr && fMenu->IsRadioMode())
        SetMarked(true);
    const BMessage* what = message != nullptr ? message : Message();
    if (what == nullptr)
        return B_BAD_VALUE;
    BMessage copy(*what);
    kits::kWhenField.Add(&copy, system_time());
    kits::kSourceField.Add(&copy, this);
    kits::kIndexField.Add(&copy, fMenu == nullptr ? -1 : fMenu->IndexOf(this));
    if (Messenger() != BMessenger())
        return BInvoker::Invoke(&copy);

    const BMenu* outermost = fMenu;
    while (outermost != nullptr && outermost->Supermenu() != nullptr)
        outermost = outermost->Supermenu();
    const BView* shownBy =
        outermost != nullptr && outermost->fField != nullptr ? outermost->fField : static_cast<const BView*>(outermost);
    BWindow* window = shownBy == nullptr ? nullptr : shownBy->Window();
    return window == nullptr ? B_BAD_VALUE : BMessenger(window).SendMessage(&copy);
}

void BMenuItem::NeedsUpdate()
{
    if (fMenu != nullptr)
        fMenu->NeedsUpdate();
}

BSeparatorItem::BSeparatorItem()
    : BMenuItem("", nullptr)
{
    fSeparator = true;
}
