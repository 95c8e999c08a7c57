// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"
#include "kits/support/Point.h"

#include <memory>

class BHandler;
class BMenu;
class BMenuItem;
class BPopUpMenu;

/// The pop-up menu of a chart. It keeps its items; the chart gets their messages and acts on them.
///
/// Used with the chart's looper locked; Open() on the main thread.
class ChartMenu {
public:
    /// @param replicant  a chart outside the application can be reconnected, but not deleted, synchronised or copied
    explicit ChartMenu(bool replicant);
    /// Closes the menu.
    ~ChartMenu();

    /// Puts a submenu of actions for a source of this name at @p index, 0 to the number of sources.
    void AddSource(const char* name, int32 index);
    /// Removes the submenu at @p index, or all of them with -1. Ignores a bad index.
    void RemoveSource(int32 index);
    /// Returns the index of the source whose submenu holds this item, or -1. The pointer may be anything: it is only
    /// compared.
    int32 SourceOf(const void* item) const;

    /// Adds or removes the item that gives a caption's place to all charts, with a separator before it. Does nothing
    /// when the menu is in that state already. The items that save stay below it.
    /// @param command  the item's message
    void Offer(uint32 command, const char* label, bool offered);

    void MarkPaused(bool paused);

    /// Opens the menu and returns. The menu stays open until the user chooses an item or clicks elsewhere.
    /// @param where   in screen coordinates
    /// @param target  gets the messages; belongs to a looper
    void Open(BPoint where, BHandler* target);

    /// The menu itself, for tests and assistive tools. This object owns it.
    BPopUpMenu* Menu() const { return fMenu.get(); }

private:
    std::unique_ptr<BPopUpMenu> fMenu;
    BMenuItem* fPause;
    BMenu* fSources;
    BMenuItem* fBeforeSaving;
};
