// SPDX-License-Identifier: MIT
#include "kits/interface/TextView.h"

#include "kits/interface/controls/TextWidget.h"
#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"

#include <QSignalBlocker>

BTextView::BTextView(BRect frame, const char* name, BRect textRect, uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags)
    , fTextRect(textRect)
{
    SetViewUIColor(B_DOCUMENT_BACKGROUND_COLOR);
}

BTextView::~BTextView() = default;

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

void BTextView::SetScrolling(bool horizontal, bool vertical, border_style border)
{
    fHorizontalBar = horizontal;
    fVerticalBar = vertical;
    fBorder = border;
    WidgetNeedsUpdate();
}

void BTextView::WidgetCreated(QWidget*)
{
    fContent = std::make_unique<kits::Content>();
    auto* widget = new kits::TextWidget;
    fContent->SetWidget(widget);
    UpdateWidget();
    ViewColorChanged();
    QObject::connect(widget, &QTextEdit::textChanged, fContent.get(),
                     [this, widget] { fText = widget->toPlainText().toStdString(); });
    kits::FillView(this, widget);
}

void BTextView::ViewColorChanged()
{
    if (fContent == nullptr)
        return;
    auto* widget = fContent->As<>();
    kits::FitPalette(widget, kits::ColorBehind(this));
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    palette.setColor(QPalette::Text, palette.color(QPalette::WindowText));
    widget->setPalette(palette);
}

void BTextView::UpdateWidget()
{
    auto* widget = fContent->As<kits::TextWidget>();
    const QSignalBlocker silent(widget);
    widget->setTextInteractionFlags(fEditable     ? Qt::TextEditorInteraction
                                    : fSelectable ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                  : Qt::NoTextInteraction);
    widget->setFocusPolicy(fEditable || fSelectable ? Qt::StrongFocus : Qt::TabFocus);
    widget->setUndoRedoEnabled(fEditable);
    widget->setVerticalScrollBarPolicy(fVerticalBar ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    widget->setHorizontalScrollBarPolicy(fHorizontalBar ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    widget->setFrameStyle(fBorder == B_FANCY_BORDER   ? QFrame::StyledPanel | QFrame::Sunken
                          : fBorder == B_PLAIN_BORDER ? QFrame::Box | QFrame::Plain
                                                      : QFrame::NoFrame);
    widget->setAccessibleName(kits::ToText(Name()));
    widget->SetTextRect(kits::ToQRect(fTextRect));
    widget->TakeText(kits::ToText(fText.c_str()));
}

void BTextView::WidgetNeedsUpdate()
{
    if (fContent != nullptr)
        kits::RunOnMain(
            this, [this] { UpdateWidget(); });
}
