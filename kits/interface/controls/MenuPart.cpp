// SPDX-License-Identifier: MIT
#include "kits/interface/controls/MenuPart.h"

#include "kits/interface/Menu.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QProxyStyle>
#include <QTimer>

#include <algorithm>

namespace {

/// Makes menus scroll that are higher than the screen, whatever the theme prefers.
class ScrollingMenus : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override
    {
        return hint == SH_Menu_Scrollable ? 1 : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

QKeySequence ToKeys(const BMenuItem& item)
{
    uint32 modifiers = 0;
    const char key = item.Shortcut(&modifiers);
    if (key == 0)
        return {};
    Qt::KeyboardModifiers held = Qt::ControlModifier;
    held.setFlag(Qt::ShiftModifier, (modifiers & B_SHIFT_KEY) != 0);
    held.setFlag(Qt::AltModifier, (modifiers & B_OPTION_KEY) != 0);
    held.setFlag(Qt::MetaModifier, (modifiers & B_CONTROL_KEY) != 0);
    return QKeySequence(QKeyCombination(held, static_cast<Qt::Key>(QChar::fromLatin1(key).toUpper().unicode())));
}

void CloseAllMenus()
{
    while (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
        menu->hide();
}

} // namespace

namespace kits {

/// Qt's menu, except that the user can also choose an item that opens a submenu, and hold the menu open with a mouse
/// button.
class MenuWidget : public QMenu {
public:
    explicit MenuWidget(MenuPart* part)
        : fPart(part)
    {
    }

protected:
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QAction* action = actionAt(event->position().toPoint());
        if (fPart && event->button() != Qt::NoButton && fPart->IsChoosableSubmenu(action)) {
            ChooseSubmenu(action);
            return;
        }
        QPointer<MenuPart> part = fPart;
        QMenu::mouseReleaseEvent(event);
        if (part && event->buttons() == Qt::NoButton)
            part->Root()->ButtonReleased();
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        QAction* action = activeAction();
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (enter && fPart && fPart->IsChoosableSubmenu(action))
            ChooseSubmenu(action);
        else
            QMenu::keyPressEvent(event);
    }

private:
    void ChooseSubmenu(QAction* action)
    {
        QPointer<MenuPart> part = fPart;
        CloseAllMenus();
        if (part)
            part->Choose(action);
    }

    QPointer<MenuPart> fPart;
};

MenuPart::MenuPart(BMenu* menu, MenuPart* parent)
    : fMenu(menu)
    , fParent(parent)
{
    static QPointer<ScrollingMenus> style;
    if (!style) {
        style = new ScrollingMenus;
        style->setParent(qApp);
    }
    fMenuWidget = new MenuWidget(this);
    fMenuWidget->setStyle(style);
    fMenuWidget->setAccessibleName(ToText(fMenu->Name()));
    Update();
}

MenuPart::MenuPart(BMenu* menu, QMenuBar* bar)
    : fMenu(menu)
    , fBar(bar)
{
    Update();
}

MenuPart::~MenuPart()
{
    for (const Entry& entry : fEntries)
        if (entry.item != nullptr && entry.item->Submenu() != nullptr)
            entry.item->Submenu()->fPart.reset();
    DeleteOnMain(fMenuWidget);
}

MenuPart* MenuPart::Root()
{
    MenuPart* root = this;
    while (root->fParent != nullptr)
        root = root->fParent;
    return root;
}

void MenuPart::Update()
{
    QWidget* widget = fBar ? static_cast<QWidget*>(fBar) : fMenuWidget;
    if (widget == nullptr)
        return;
    std::vector<Entry> entries;
    std::vector<std::string> labels;
    for (const auto& item : fMenu->fItems) {
        const auto known = std::find_if(fEntries.begin(), fEntries.end(),
                                        [&](const Entry& entry) { return entry.item == item.get(); });
        QAction* action = known != fEntries.end() ? known->action : new QAction(widget);
        if (known == fEntries.end()) {
            connect(action, &QAction::triggered, this, [this, action] { Choose(action); });
            if (item->Submenu() != nullptr) {
                BMenu* submenu = item->Submenu();
                submenu->fPart = std::make_unique<MenuPart>(submenu, this);
                action->setMenu(submenu->fPart->Menu());
            }
        }
        entries.push_back({item.get(), action});
        labels.push_back(item->Label());
    }
    for (const Entry& former : fEntries) {
        const bool stays = std::any_of(entries.begin(), entries.end(),
                                       [&](const Entry& entry) { return entry.action == former.action; });
        if (!stays)
            delete former.action;
    }
    fEntries = std::move(entries);

    QList<QAction*> actions;
    for (const Entry& entry : fEntries)
        actions.append(entry.action);
    if (widget->actions() != actions) {
        for (QAction* action : widget->actions())
            widget->removeAction(action);
        widget->addActions(actions);
    }
    labels = WithTriggers(labels);
    for (std::size_t i = 0; i < fEntries.size(); i++)
        UpdateAction(fEntries[i], labels[i]);
}

void MenuPart::UpdateAction(const Entry& entry, const std::string& text)
{
    const BMenuItem& item = *entry.item;
    QAction* action = entry.action;
    action->setSeparator(item.IsSeparator());
    if (item.IsSeparator())
        return;
    action->setText(ToText(text.c_str()));
    action->setEnabled(item.IsEnabled());
    action->setShortcut(ToKeys(item));
    const bool radio = fMenu->IsRadioMode() && fMenu->FindMarked() != nullptr;
    if (radio && action->actionGroup() == nullptr) {
        // An action in a group of its own looks like a choice, and the menu itself marks one item.
        auto* group = new QActionGroup(action);
        group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
        group->addAction(action);
    }
    action->setCheckable(radio || item.IsMarked());
    action->setChecked(item.IsMarked());
}

MenuPart::Entry* MenuPart::FindEntry(const QAction* action)
{
    for (Entry& entry : fEntries)
        if (entry.action == action && entry.item != nullptr)
            return &entry;
    return nullptr;
}

bool MenuPart::Choose(const QAction* action)
{
    Entry* entry = FindEntry(action);
    if (entry == nullptr || !entry->item->IsEnabled())
        return false;
    BMenuItem* item = entry->item;
    // Qt has toggled the mark by itself.
    entry->action->setChecked(item->IsMarked());
    const MenuPart* root = Root();
    if (root->fChosen)
        root->fChosen(item);
    else
        item->Invoke();
    return true;
}

bool MenuPart::IsChoosableSubmenu(const QAction* action)
{
    const Entry* entry = action == nullptr ? nullptr : FindEntry(action);
    return entry != nullptr && entry->item->Submenu() != nullptr && entry->item->Message() != nullptr &&
           entry->item->IsEnabled();
}

void MenuPart::Forget(const BMenuItem* item)
{
    for (Entry& entry : fEntries) {
        if (entry.item != item)
            continue;
        if (item->Submenu() != nullptr)
            item->Submenu()->fPart.reset();
        entry.item = nullptr;
    }
}

void MenuPart::Open(const QPoint& where, std::function<void()> closed)
{
    connect(
        fMenuWidget, &QMenu::aboutToHide, this,
        [this, closed = std::move(closed)] { QTimer::singleShot(0, this, closed); }, Qt::SingleShotConnection);
    fMenuWidget->popup(where);
}

void MenuPart::GoToMarked()
{
    for (const Entry& entry : fEntries)
        if (entry.item != nullptr && entry.item->IsMarked())
            fMenuWidget->setActiveAction(entry.action);
}

void MenuPart::ButtonReleased()
{
    if (fCloseOnRelease && fMenuWidget->isVisible())
        CloseAllMenus();
}

} // namespace kits
