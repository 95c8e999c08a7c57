// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"
#include "kits/support/Point.h"

#include <memory>

class BHandler;
class BMenu;
class BMenuItem;
class BPopUpMenu;

/// The pop-up menu of a chart. It keeps its items; what they mean is the chart's, which gets all their messages.
///
/// Used with the chart's looper locked; Open() on the main thread.
class ChartMenu {
public:
    /// @param replicant  a chart outside the application can be reconnected, but not deleted, synchronised or copied
    explicit ChartMenu(bool replicant);
    /// Closes the menu.
    ~ChartMenu();

    /// Puts a submenu for what can be done to a source of this name at @p index, 0 to the number of sources.
    void AddSource(const char* name, int32 index);
    /// Takes the submenu at @p index away, all of them with -1; nothing for a bad index.
    void RemoveSource(int32 index);
    /// Which source has this item in its submenu; -1 for none. The pointer may be anything: it is only compared.
    int32 SourceOf(const void* item) const;

    /// Makes an item that gives a caption's place to all charts come or go, with a separator before it. Nothing happens
    /// when it is already so. What is saved stays below it.
    /// @param command  its message
    void Offer(uint32 command, const char* label, bool offered);

    void MarkPaused(bool paused);

    /// Opens the menu and returns. It stays open until something is chosen or the user clicks elsewhere.
    /// @param where   in screen coordinates
    /// @param target  gets the messages; belongs to a looper
    void Open(BPoint where, BHandler* target);

    /// For tests and assistive tools: the menu itself, owned by this.
    BPopUpMenu* Menu() const { return fMenu.get(); }

private:
    std::unique_ptr<BPopUpMenu> fMenu;
    BMenuItem* fPause;
    BMenu* fSources;
    BMenuItem* fBeforeSaving;
};
