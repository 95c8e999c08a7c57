// SPDX-License-Identifier: MIT
#include "kits/interface/controls/TextPaste.h"

#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/interface/InterfaceDefs.h"
#include "kits/interface/controls/FieldMenu.h"
#include "kits/interface/platform/Selections.h"
#include "kits/interface/platform/selections/Fetches.h"

#include <QAbstractSpinBox>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>

namespace kits::TextPaste {

namespace {

using Selections::Name;

/// Returns the field that receives this object's typing; null if there is none or it is read-only.
QLineEdit* FieldOf(QObject& object)
{
    auto* field = qobject_cast<QLineEdit*>(&object);
    if (field == nullptr && qobject_cast<QAbstractSpinBox*>(&object) != nullptr)
        field = object.findChild<QLineEdit*>();
    return field != nullptr && field->isEnabled() && !field->isReadOnly() ? field : nullptr;
}

void Insert(const QPointer<QLineEdit>& field, const std::string& text)
{
    if (field != nullptr && field->isEnabled() && !field->isReadOnly())
        field->insert(QString::fromStdString(text));
}

void Paste(QLineEdit& field, Name name)
{
    std::unique_ptr<SelectionSource> source = Selections::SourceOf(name);
    if (source == nullptr)
        return;
    const auto use = [target = QPointer<QLineEdit>(&field)](const SelectionForm&, const std::string& data) {
        if (data.empty())
            return false;
        const DispatchScope scope;
        Insert(target, Fetches::TextOf(data));
        return true;
    };
    Fetches::Start(std::move(source), Fetches::TextForms(), use, [](SelectionFetch::State state) {
        if (state != SelectionFetch::State::kTaken)
            beep();
    });
}

/// @return false if the toolkit has the text itself
bool PasteForeign(QLineEdit& field, Name name)
{
    if (Selections::AtHand(name) != nullptr)
        return false;
    Paste(field, name);
    return true;
}

bool UseKey(QLineEdit& field, const QKeyEvent& key)
{
    if (!key.matches(QKeySequence::Paste))
        return false;
    // X programs paste the primary selection with these keys.
    const bool isPrimary = key.key() == Qt::Key_Insert && key.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    return PasteForeign(field, isPrimary ? Name::kPrimary : Name::kClipboard);
}

bool UseButton(QLineEdit& field, const QMouseEvent& mouse)
{
    // The press has moved the cursor.
    if (mouse.button() != Qt::MiddleButton || !Selections::HasPrimary() ||
        Selections::AtHand(Name::kPrimary) != nullptr)
        return false;
    field.deselect();
    Paste(field, Name::kPrimary);
    return true;
}

void OpenMenu(QLineEdit& field, const QContextMenuEvent& event)
{
    FieldMenu::Open(
        field, event.globalPos(),
        [&field] {
            if (!PasteForeign(field, Name::kClipboard))
                field.paste();
        });
}

} // namespace

bool Handle(QObject& receiver, QEvent& event)
{
    const QEvent::Type type = event.type();
    if ((type != QEvent::KeyPress && type != QEvent::MouseButtonRelease && type != QEvent::ContextMenu) ||
        !receiver.isWidgetType())
        return false;
    QLineEdit* const field = FieldOf(receiver);
    if (field == nullptr)
        return false;
    bool isUsed = true;
    if (type == QEvent::ContextMenu)
        OpenMenu(*field, static_cast<const QContextMenuEvent&>(event));
    else if (type == QEvent::KeyPress)
        isUsed = UseKey(*field, static_cast<const QKeyEvent&>(event));
    else
        isUsed = UseButton(*field, static_cast<const QMouseEvent&>(event));
    if (isUsed)
        event.accept();
    return isUsed;
}

} // namespace kits::TextPaste
