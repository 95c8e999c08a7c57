// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Invoker.h"

#include <memory>
#include <string>

class BMenu;

/// One row of a menu: a label that sends a message, or that opens a submenu, or both.
///
/// An item belongs to one menu at most, which deletes it. It owns its message and its submenu.
class BMenuItem : public BInvoker {
public:
    /// @param label      copied
    /// @param message    owned from here; null sends nothing (a pop-up still returns the item)
    /// @param shortcut   a letter or digit that invokes the item together with the command key, which is Ctrl; 0 for
    ///                   none
    /// @param modifiers  further keys that must be held: B_SHIFT_KEY, B_OPTION_KEY, B_CONTROL_KEY
    BMenuItem(const char* label, BMessage* message, char shortcut = 0, uint32 modifiers = 0);
    /// An item with the name of `submenu` as its label, which owns `submenu` from here. With a message it can be chosen
    /// itself, by a click or by Enter, while the right arrow key or resting the pointer on it opens the submenu.
    explicit BMenuItem(BMenu* submenu, BMessage* message = nullptr);
    ~BMenuItem() override;

    virtual void SetLabel(const char* label);
    const char* Label() const { return fLabel.c_str(); }

    virtual void SetEnabled(bool enabled);
    /// True if the item and the menus that lead to it are enabled.
    bool IsEnabled() const;

    /// Shows or hides the mark. In a menu in radio mode, marking an item removes the mark from the others; with
    /// label-from-marked, its label becomes the label of the item or field that opens the menu.
    virtual void SetMarked(bool marked);
    bool IsMarked() const { return fMarked; }
    bool IsSeparator() const { return fSeparator; }

    char Shortcut(uint32* modifiers = nullptr) const;

    /// The menu that it opens, or null. Owned by the item.
    BMenu* Submenu() const { return fSubmenu.get(); }
    /// The menu that contains it, or null.
    BMenu* Menu() const { return fMenu; }

    /// Acts as if the user had chosen it: marks it if its menu is in radio mode, and sends a copy of `message`, or of
    /// its own one if that is null, to its target, with "when" (int64, system_time()), "source" (pointer to the item)
    /// and "index" (int32, its place in its menu). An item without a target sends to the window of its menu.
    /// @return B_BAD_VALUE without a message, B_NOT_ALLOWED for a disabled item, otherwise the result of sending
    status_t Invoke(BMessage* message = nullptr) override;

private:
    friend class BMenu;
    friend class BSeparatorItem;

    void NeedsUpdate();

    std::unique_ptr<BMenu> fSubmenu;
    BMenu* fMenu = nullptr;
    std::string fLabel;
    uint32 fModifiers = 0;
    char fShortcut = 0;
    bool fEnabled = true;
    bool fMarked = false;
    bool fSeparator = false;
};

/// A line between items. It has no label, takes no focus and cannot be chosen.
class BSeparatorItem : public BMenuItem {
public:
    BSeparatorItem();
};
