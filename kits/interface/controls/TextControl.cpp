// SPDX-License-Identifier: MIT
#include "kits/interface/TextControl.h"

#include "kits/application/Message.h"
#include "kits/interface/controls/LabeledWidget.h"
#include "kits/interface/core/Content.h"

#include <QLineEdit>
#include <QSignalBlocker>

BTextControl::BTextControl(BRect frame, const char* name, const char* label, const char* initialText, BMessage* message,
                           uint32 resizingMode, uint32 flags)
    : BControl(frame, name, label, message, resizingMode, flags)
    , fText(initialText == nullptr ? "" : initialText)
{
}

BTextControl::~BTextControl() = default;

void BTextControl::AttachedToWindow()
{
    BControl::AttachedToWindow();
    TakePreferredHeight();
}

void BTextControl::SetText(const char* text)
{
    if (text == nullptr)
        text = "";
    if (fText == text)
        return;
    fText = text;
    WidgetNeedsUpdate();
}

void BTextControl::SetModificationMessage(BMessage* message)
{
    fModification.reset(message);
}

void BTextControl::SetDivider(float position)
{
    fDivider = position;
    WidgetNeedsUpdate();
}

float BTextControl::Divider() const
{
    if (fDivider >= 0 || fContent == nullptr)
        return std::max(fDivider, 0.0f);
    return static_cast<float>(fContent->As<kits::LabeledWidget>()->Divider());
}

float BTextControl::NarrowestLabelWidth()
{
    EnsureWidget()->ensurePolished();
    return static_cast<float>(fContent->As<kits::LabeledWidget>()->NarrowestLabelWidth());
}

QWidget* BTextControl::MakeWidget()
{
    auto* edit = new QLineEdit;
    QObject::connect(
        edit, &QLineEdit::textEdited, fContent.get(),
        [this](const QString& text) {
            fText = text.toStdString();
            if (fModification != nullptr)
                Invoke(fModification.get());
        });
    QObject::connect(edit, &QLineEdit::returnPressed, fContent.get(), [this] { Invoke(); });
    return new kits::LabeledWidget(edit);
}

void BTextControl::UpdateWidget()
{
    BControl::UpdateWidget();
    auto* widget = fContent->As<kits::LabeledWidget>();
    auto* edit = static_cast<QLineEdit*>(widget->Field());
    const QSignalBlocker silent(edit);
    const QString text = kits::ToText(fText.c_str());
    if (edit->text() != text)
        edit->setText(text);
    widget->SetLabel(kits::ToText(Label()));
    widget->SetDivider(fDivider);
}
