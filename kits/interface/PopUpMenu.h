// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Menu.h"

/// A menu that opens at a point of the screen, or that shows its choice in a menu field.
class BPopUpMenu : public BMenu {
public:
    explicit BPopUpMenu(const char* name, bool radioMode = true, bool labelFromMarked = true,
                        menu_layout layout = B_ITEMS_IN_COLUMN);

    /// Opens the menu with its top left corner at `where`, moved so that it fits on the screen.
    ///
    /// Main thread only. Unless `async` is set, the call returns when the menu has closed; until then a nested event
    /// loop runs: messages, timers and drawing go on everywhere.
    ///
    /// @param where            in screen coordinates
    /// @param deliversMessage  true: the chosen item is invoked, and so sends its message; false: it is only returned
    /// @param openAnyway       true: the menu stays open after the click that opened it until the user chooses an item
    ///                         or clicks elsewhere; false: releasing the button closes it, and over an item chooses
    ///                         that. If no button is down (opened by keyboard) it stays open in either case
    /// @param async            returns null at once; the choice is delivered if `deliversMessage` is true
    /// @return the chosen item, still owned by the menu; null if the user chose nothing, if the menu was closed because
    ///         something below it is destroyed, if it is empty or open already, or on another thread
    BMenuItem* Go(BPoint where, bool deliversMessage = false, bool openAnyway = false, bool async = false);
};
