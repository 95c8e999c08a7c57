// SPDX-License-Identifier: MIT
#include "src/support/ui/MenuTargets.h"

#include "kits/interface/Menu.h"
#include "kits/interface/MenuItem.h"

void SetTargetForItemsRecursive(BMenu* menu, BHandler* target)
{
    if (menu == nullptr)
        return;
    for (int32 index = 0; BMenuItem* item = menu->ItemAt(index); ++index) {
        item->SetTarget(target);
        SetTargetForItemsRecursive(item->Submenu(), target);
    }
}
