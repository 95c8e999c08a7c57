// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Menu.h"

/// A menu that opens at a point of the screen, or that shows its choice in a menu field.
class BPopUpMenu : public BMenu {
public:
    explicit BPopUpMenu(const char* name, bool radioMode = true, bool labelFromMarked = true,
                        menu_layout layout = B_ITEMS_IN_COLUMN);
    ~BPopUpMenu() override;

    /// Opens the menu with its left top corner at `where`, moved so that it fits on the screen.
    ///
    /// Main thread only. Unless it is asynchronous the call returns when the menu has closed; until then a nested event
    /// loop runs: messages, timers and drawing go on everywhere.
    ///
    /// @param where           in screen coordinates
    /// @param deliversMessage true: the chosen item is invoked, and so sends its message; false: it is only returned
    /// @param openAnyway      true: the menu stays open after the click that opened it until something is chosen or the
    ///                        user clicks elsewhere; false: letting the button go closes it, over an item that one is
    ///                        chosen. When no button is down (opened by keyboard) it stays open in either case
    /// @param async           returns null at once; the choice is delivered if `deliversMessage` says so
    /// @return the chosen item, still owned by the menu; null when the user chose nothing, when the menu was closed
    ///         from outside because something below it goes away, is empty or open already, or on another thread
    BMenuItem* Go(BPoint where, bool deliversMessage = false, bool openAnyway = false, bool async = false);
};
