// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/MenuItem.h"
#include "kits/interface/View.h"

#include <functional>
#include <memory>
#include <vector>

class BMenuField;
class BMessenger;

namespace kits {
class MenuPart;
}

/// The arrangement of a menu's items; has no effect: the items of a bar stand in a row, those of any other menu
/// in a column.
enum menu_layout { B_ITEMS_IN_ROW = 0, B_ITEMS_IN_COLUMN };

/// A list of items that opens under a menu bar, beside an item, or as a pop-up. The toolkit shows it; a menu higher
/// than the screen scrolls.
///
/// A menu owns its items, and an item owns its submenu: deleting the outermost menu deletes all. Everything may be
/// changed at any time, from any thread under the looper lock of its window, even while the menu is open.
class BMenu : public BView {
public:
    explicit BMenu(const char* name, menu_layout layout = B_ITEMS_IN_COLUMN);
    ~BMenu() override;

    /// Adds an item at the end or before the item at `index` (0 to CountItems()). The menu owns the item from here.
    /// @return false, and the item stays the caller's, for null, for an item that has a menu already, or for a bad
    ///         index
    bool AddItem(BMenuItem* item);
    bool AddItem(BMenuItem* item, int32 index);
    /// Adds a new item that opens `submenu` and has its name as the label.
    bool AddItem(BMenu* submenu);
    bool AddItem(BMenu* submenu, int32 index);
    bool AddSeparatorItem();

    /// Removes an item and gives it to the caller.
    /// @return false, or null, if it is not in this menu
    bool RemoveItem(BMenuItem* item);
    BMenuItem* RemoveItem(int32 index);

    /// Null, or -1, if there is none.
    BMenuItem* ItemAt(int32 index) const;
    BMenu* SubmenuAt(int32 index) const;
    int32 IndexOf(const BMenuItem* item) const;
    int32 CountItems() const { return static_cast<int32>(fItems.size()); }
    /// Returns the first item, including submenus depth first, with this label, or whose message has this code; null if
    /// there is none.
    BMenuItem* FindItem(const char* label) const;
    BMenuItem* FindItem(uint32 command) const;
    /// Returns the first marked item of this menu, or null.
    BMenuItem* FindMarked() const;

    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const;

    /// In radio mode at most one item is marked, and choosing an item marks it.
    virtual void SetRadioMode(bool on);
    bool IsRadioMode() const { return fRadioMode; }
    /// If on, the label of the item or field that opens this menu follows the marked item.
    virtual void SetLabelFromMarked(bool on);
    bool IsLabelFromMarked() const { return fLabelFromMarked; }

    /// The item that opens this menu, and the menu that contains that item; null for an outermost menu.
    BMenuItem* Superitem() const { return fSuperitem; }
    BMenu* Supermenu() const;

protected:
    /// The toolkit's menu; exists only while it is shown.
    std::unique_ptr<kits::MenuPart> fPart;

private:
    friend class BMenuItem;
    friend class BMenuField;
    friend class kits::MenuPart;

    /// Returns the first item for which the function returns true, submenus included.
    BMenuItem* Find(const std::function<bool(const BMenuItem&)>& matches) const;
    void NeedsUpdate();
    /// Called when an item was marked, or the marked item's label has changed.
    void ItemMarked(BMenuItem* item);

    std::vector<std::unique_ptr<BMenuItem>> fItems;
    BMenuItem* fSuperitem = nullptr;
    BMenuField* fField = nullptr; ///< the field that has this menu
    bool fEnabled = true;
    bool fRadioMode = false;
    bool fLabelFromMarked = false;
};
