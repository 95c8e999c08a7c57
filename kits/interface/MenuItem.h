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
    /// @param label     copied
    /// @param message   owned from here; null sends nothing (a pop-up still returns the item)
    /// @param shortcut  a letter or digit that invokes the item together with the command key, which is Ctrl; 0 none
    /// @param modifiers more keys that must be held: B_SHIFT_KEY, B_OPTION_KEY, B_CONTROL_KEY
    BMenuItem(const char* label, BMessage* message, char shortcut = 0, uint32 modifiers = 0);
    /// An item labelled with the name of `submenu`, which it owns from here. With a message it can be chosen itself: by
    /// a click on it, or by Enter, while the right arrow key or resting the pointer opens the submenu.
    explicit BMenuItem(BMenu* submenu, BMessage* message = nullptr);
    ~BMenuItem() override;

    virtual void SetLabel(const char* label);
    const char* Label() const { return fLabel.c_str(); }

    virtual void SetEnabled(bool enabled);
    /// True when the item and the menus that lead to it are enabled.
    bool IsEnabled() const;

    /// Shows or hides the mark. In a menu in radio mode marking an item takes the mark from the others, and with
    /// label-from-marked its label becomes the label of what opens the menu.
    virtual void SetMarked(bool marked);
    bool IsMarked() const { return fMarked; }
    bool IsSeparator() const { return fSeparator; }

    virtual void SetShortcut(char shortcut, uint32 modifiers);
    char Shortcut(uint32* modifiers = nullptr) const;

    /// The menu that it opens; null when it opens none. Owned by the item.
    BMenu* Submenu() const { return fSubmenu.get(); }
    /// The menu that it stands in; null when it stands in none.
    BMenu* Menu() const { return fMenu; }

    /// As if the user had chosen it: marks it where its menu is in radio mode, and sends `message`, or its own when
    /// that is null, to its target, as a copy with "when" (int64, system_time()), "source" (pointer to the item) and
    /// "index" (int32, its place in its menu). An item that has no target sends to the window that its menu belongs to.
    /// @return B_BAD_VALUE without a message, B_NOT_ALLOWED for a disabled item, else what sending returned
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
    ~BSeparatorItem() override;
};
