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

/// The labels as Qt takes them, each with an underlined letter or digit of its own as far as there are enough: the
/// first of a word if one is free, else any. The labels' own ampersands stay.
std::vector<std::string> WithTriggers(const std::vector<std::string>& labels);

/// What the toolkit shows of a BMenu: a menu that pops up, with those of its submenus, or the menus of a bar. It is
/// made when the menu opens and goes when it has closed (a bar's goes with the bar), and follows every change of the
/// BMenu meanwhile.
///
/// Main thread, but for Forget and the destructor, which any thread may call with the interface lock held.
class MenuPart : public QObject {
public:
    /// A menu that pops up.
    explicit MenuPart(BMenu* menu);
    /// Fills the bar, which is not owned.
    MenuPart(BMenu* menu, QMenuBar* bar);
    ~MenuPart() override;

    /// Null for a bar.
    QMenu* Menu() const { return fMenuWidget; }

    /// What becomes of the item that the user chooses in this menu or one under it; at first it is invoked.
    void SetChosen(std::function<void(BMenuItem*)> chosen) { fChosen = std::move(chosen); }
    /// Has letting go of the mouse button anywhere close the menu.
    void CloseOnRelease() { fCloseOnRelease = true; }
    /// Opens the menu without waiting, and has `closed` called once, in a turn of the event loop of its own, when it
    /// has closed. That function may destroy this object.
    void Open(const QPoint& where, std::function<void()> closed);
    /// Puts the keyboard's place on the marked item.
    void GoToMarked();

    /// Makes Qt's menu what the BMenu is now.
    void Update();
    /// The item leaves the menu: it is not touched any more.
    void Forget(const BMenuItem* item);

private:
    friend class MenuWidget;

    struct Entry {
        BMenuItem* item; ///< null once it was forgotten
        QAction* action; ///< belongs to the widget
    };

    MenuPart(BMenu* menu, MenuPart* parent);

    void MakeMenu();
    MenuPart* Root();
    Entry* FindEntry(const QAction* action);
    void UpdateAction(const Entry& entry, const std::string& text);
    /// @return false when there is nothing to choose
    bool Choose(const QAction* action);
    /// Whether the item opens a submenu and has a message of its own.
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
