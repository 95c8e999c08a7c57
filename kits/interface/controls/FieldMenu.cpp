// SPDX-License-Identifier: MIT
#include "kits/interface/controls/FieldMenu.h"

#include "kits/interface/platform/Selections.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QIcon>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>

#include <functional>

namespace kits::FieldMenu {

namespace {

QString TextOf(const char* text, QKeySequence::StandardKey key)
{
    const QString keys = QKeySequence(key).toString(QKeySequence::NativeText);
    const QString words = QLineEdit::tr(text);
    return keys.isEmpty() ? words : words + QLatin1Char('\t') + keys;
}

void Add(QMenu& menu, const QString& text, const char* icon, bool isEnabled, const std::function<void()>& action)
{
    QAction* const item = menu.addAction(QIcon::fromTheme(QString::fromLatin1(icon)), text);
    item->setEnabled(isEnabled);
    QObject::connect(item, &QAction::triggered, &menu, action);
}

void AddSteps(QMenu& menu, QAbstractSpinBox& box)
{
    menu.addSeparator();
    Add(
        menu, QAbstractSpinBox::tr("&Step up"), "", true, [&box] { box.stepUp(); });
    Add(menu, QAbstractSpinBox::tr("Step &down"), "", true, [&box] { box.stepDown(); });
}

} // namespace

void Open(QLineEdit& field, const QPoint& where, const std::function<void()>& paste)
{
    auto* const menu = new QMenu(&field);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool isChosen = field.hasSelectedText();
    const bool isText = !field.text().isEmpty();
    Add(
        *menu, TextOf("&Undo", QKeySequence::Undo), "edit-undo", field.isUndoAvailable(), [&field] { field.undo(); });
    Add(*menu, TextOf("&Redo", QKeySequence::Redo), "edit-redo", field.isRedoAvailable(), [&field] { field.redo(); });
    menu->addSeparator();
    Add(
        *menu, TextOf("Cu&t", QKeySequence::Cut), "edit-cut", isChosen, [&field] { field.cut(); });
    Add(*menu, TextOf("&Copy", QKeySequence::Copy), "edit-copy", isChosen, [&field] { field.copy(); });
    Add(*menu, TextOf("&Paste", QKeySequence::Paste), "edit-paste",
        Selections::MayHaveText(Selections::Name::kClipboard), paste);
    Add(*menu, QLineEdit::tr("Delete"), "edit-delete", isChosen, [&field] { field.del(); });
    menu->addSeparator();
    Add(*menu, TextOf("Select All", QKeySequence::SelectAll), "edit-select-all", isText,
        [&field] { field.selectAll(); });
    if (auto* const box = qobject_cast<QAbstractSpinBox*>(field.parentWidget()))
        AddSteps(*menu, *box);
    menu->popup(where);
}

} // namespace kits::FieldMenu
