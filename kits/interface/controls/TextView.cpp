// SPDX-License-Identifier: MIT
#include "kits/interface/TextView.h"

#include "kits/interface/controls/TextWidget.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"

#include <QSignalBlocker>

BTextView::BTextView(BRect frame, const char* name, BRect textRect, uint32 resizingMode, uint32 flags)
    : ScrollTarget(frame, name, resizingMode, flags)
    , fTextRect(textRect)
{
    SetViewUIColor(B_DOCUMENT_BACKGROUND_COLOR);
}

void BTextView::SetText(const char* text)
{
    if (text == nullptr)
        text = "";
    if (fText == text)
        return;
    fText = text;
    WidgetNeedsUpdate();
}

void BTextView::SetTextRect(BRect rect)
{
    fTextRect = rect;
    WidgetNeedsUpdate();
}

void BTextView::MakeEditable(bool editable)
{
    fEditable = editable;
    WidgetNeedsUpdate();
}

void BTextView::MakeSelectable(bool selectable)
{
    fSelectable = selectable;
    WidgetNeedsUpdate();
}

QWidget* BTextView::MakeWidget()
{
    auto* widget = new kits::TextWidget;
    QObject::connect(widget, &QTextEdit::textChanged, fContent.get(),
                     [this, widget] { fText = widget->toPlainText().toStdString(); });
    return widget;
}

void BTextView::ViewColorChanged()
{
    if (fContent == nullptr)
        return;
    ScrollTarget::ViewColorChanged();
    auto* widget = fContent->As<>();
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    palette.setColor(QPalette::Text, palette.color(QPalette::WindowText));
    widget->setPalette(palette);
}

void BTextView::UpdateWidget()
{
    auto* widget = fContent->As<kits::TextWidget>();
    const QSignalBlocker silent(widget);
    ScrollTarget::UpdateWidget();
    widget->setTextInteractionFlags(fEditable     ? Qt::TextEditorInteraction
                                    : fSelectable ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                  : Qt::NoTextInteraction);
    widget->setFocusPolicy(fEditable || fSelectable ? Qt::StrongFocus : Qt::TabFocus);
    widget->setUndoRedoEnabled(fEditable);
    widget->setAccessibleName(kits::ToText(Name()));
    widget->SetTextRect(kits::ToQRect(fTextRect));
    widget->TakeText(kits::ToText(fText.c_str()));
}
