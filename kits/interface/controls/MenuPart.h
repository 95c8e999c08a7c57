// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>

#include <functional>
#include <string>
#include <vector>

class BMenu;
class BMenuItem;
class QAction;
class QMenuBar;

namespace kits {

/// Returns the labels in Qt's form, each with an underlined letter or digit of its own as far as there are enough: the
/// first of a word if one is free, otherwise any. Ampersands in the labels stay.
std::vector<std::string> WithTriggers(const std::vector<std::string>& labels);

/// The toolkit's side of a BMenu: a pop-up menu with those of its submenus, or the menus of a bar. It is made when the
/// menu opens and destroyed when it has closed (a bar's is destroyed with the bar), and follows every change of the
/// BMenu meanwhile.
///
/// Main thread, except for Forget and the destructor, which any thread may call with the interface lock held.
class MenuPart : public QObject {
public:
    /// Makes a pop-up menu.
    /// @param parent  if it is a submenu, the part of the menu from which it opens
    explicit MenuPart(BMenu* menu, MenuPart* parent = nullptr);
    /// Fills the bar, which is not owned.
    MenuPart(BMenu* menu, QMenuBar* bar);
    ~MenuPart() override;

    /// Returns null for a bar.
    QMenu* Menu() const { return fMenuWidget; }

    /// Sets the function that gets the item that the user chooses in this menu or a submenu; initially the item is
    /// invoked.
    void SetChosen(std::function<void(BMenuItem*)> chosen) { fChosen = std::move(chosen); }
    /// Makes releasing the mouse button anywhere close the menu.
    void CloseOnRelease() { fCloseOnRelease = true; }
    /// Opens the menu without waiting, and calls `closed` once, in a later turn of the event loop, when it has closed.
    /// That function may destroy this object.
    void Open(const QPoint& where, std::function<void()> closed);
    /// Moves the keyboard's highlight to the marked item.
    void GoToMarked();

    /// Updates Qt's menu to the BMenu.
    void Update();
    /// The item leaves the menu: this object no longer touches it.
    void Forget(const BMenuItem* item);

private:
    friend class MenuWidget;

    struct Entry {
        BMenuItem* item; ///< null once it was forgotten
        QAction* action; ///< belongs to the widget
    };

    MenuPart* Root();
    Entry* FindEntry(const QAction* action);
    void UpdateAction(const Entry& entry, const std::string& text);
    /// @return false if there is nothing to choose
    bool Choose(const QAction* action);
    /// Returns whether the item opens a submenu and has a message of its own.
    bool IsChoosableSubmenu(const QAction* action);
    void ButtonReleased();

    BMenu* fMenu;
    MenuPart* fParent = nullptr;
    QPointer<QMenu> fMenuWidget; ///< owned
    QPointer<QMenuBar> fBar;
    std::vector<Entry> fEntries;
    std::function<void(BMenuItem*)> fChosen;
    bool fCloseOnRelease = false;
};

} // namespace kits
