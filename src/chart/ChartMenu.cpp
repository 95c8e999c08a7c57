// SPDX-License-Identifier: MIT
#include "src/chart/ChartMenu.h"

#include "kits/application/Message.h"
#include "kits/interface/PopUpMenu.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"
#include "src/support/ui/MenuTargets.h"

ChartMenu::ChartMenu(bool replicant)
    : fMenu(std::make_unique<BPopUpMenu>(Tr("Chart"), false, false))
    , fPause(new BMenuItem(Tr("Pause"), new BMessage(MSG_CHART_PAUSE)))
    , fSources(new BMenu(Tr("Sources...")))
    , fBeforeSaving(new BSeparatorItem())
{
    fMenu->AddItem(new BMenuItem(Tr("Preferences..."), new BMessage(MSG_CHART_PREFS)));
    fMenu->AddSeparatorItem();
    if (replicant) {
        fMenu->AddItem(new BMenuItem(Tr("Reconnect"), new BMessage(MSG_RECONNECT)));
    } else {
        fMenu->AddItem(new BMenuItem(Tr("Add new chart"), new BMessage(MSG_CHART_ADD)));
        fMenu->AddItem(new BMenuItem(Tr("Delete this chart"), new BMessage(MSG_CHART_DELETE)));
        fMenu->AddSeparatorItem();
        fMenu->AddItem(new BMenuItem(Tr("Synchronize others"), new BMessage(MSG_SYNC_OTHERS)));
    }
    fMenu->AddItem(fPause);
    fMenu->AddItem(fSources);
    fMenu->AddItem(fBeforeSaving);
    fMenu->AddItem(new BMenuItem(Tr("Save picture\xe2\x80\xa6"), new BMessage(MSG_SAVE_PICTURE)));
    fMenu->AddItem(new BMenuItem(Tr("Save values\xe2\x80\xa6"), new BMessage(MSG_SAVE_VALUES)));
    if (!replicant) {
        // The keyboard's way to do what the handle does by mouse.
        fMenu->AddItem(new BMenuItem(Tr("Copy to desktop"), new BMessage(MSG_COPY_TO_DESKTOP)));
        fMenu->AddItem(new BMenuItem(Tr("Go to desktop"), new BMessage(MSG_GO_TO_DESKTOP)));
    }
    fMenu->AddItem(new BMenuItem(Tr("Copy settings"), new BMessage(MSG_COPY_SETTINGS), 'C'));
    fMenu->AddItem(new BMenuItem(Tr("Paste"), new BMessage(MSG_PASTE), 'V'));
    if (replicant)
        fMenu->AddItem(new BMenuItem(Tr("Remove from desktop"), new BMessage(MSG_REMOVE_REPLICANT)));
}

ChartMenu::~ChartMenu() = default;

void ChartMenu::AddSource(const char* name, int32 index)
{
    auto* source = new BMenu(name);
    source->AddItem(new BMenuItem(Tr("Remove"), new BMessage(MSG_REMOVE_SOURCE)));
    source->AddItem(new BMenuItem(Tr("Paste color"), new BMessage(MSG_PASTE_COLOR)));
    if (!fSources->AddItem(source, index))
        delete source;
}

void ChartMenu::RemoveSource(int32 index)
{
    if (index != -1) {
        delete fSources->RemoveItem(index);
        return;
    }
    while (fSources->CountItems() > 0)
        delete fSources->RemoveItem(fSources->CountItems() - 1);
}

int32 ChartMenu::SourceOf(const void* item) const
{
    for (int32 i = 0; i < fSources->CountItems(); i++) {
        const BMenu* source = fSources->SubmenuAt(i);
        for (int32 j = 0; item != nullptr && j < source->CountItems(); j++)
            if (source->ItemAt(j) == item)
                return i;
    }
    return -1;
}

void ChartMenu::Offer(uint32 command, const char* label, bool offered)
{
    BMenuItem* item = fMenu->FindItem(command);
    if (offered && item == nullptr) {
        fMenu->AddItem(new BSeparatorItem(), fMenu->IndexOf(fBeforeSaving));
        fMenu->AddItem(new BMenuItem(label, new BMessage(command)), fMenu->IndexOf(fBeforeSaving));
    } else if (!offered && item != nullptr) {
        const int32 index = fMenu->IndexOf(item);
        delete fMenu->RemoveItem(index);
        delete fMenu->RemoveItem(index - 1);
    }
}

void ChartMenu::MarkPaused(bool paused)
{
    fPause->SetMarked(paused);
}

void ChartMenu::Open(BPoint where, BHandler* target)
{
    SetTargetForItemsRecursive(fMenu.get(), target);
    fMenu->Go(where, true, true, true);
}
