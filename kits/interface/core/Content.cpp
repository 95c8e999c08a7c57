// SPDX-License-Identifier: MIT
#include "kits/interface/core/Content.h"

#include "kits/interface/View.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPrivate.h"

#include <QGuiApplication>
#include <QPalette>
#include <QWidget>

namespace {

bool IsDark(const QColor& color)
{
    return qGray(color.rgb()) < 128;
}

} // namespace

namespace kits {

Content::~Content()
{
    DeleteOnMain(fWidget);
}

void DeleteOnMain(QWidget* widget)
{
    if (IsMainThread())
        delete widget;
    else if (widget != nullptr)
        widget->deleteLater();
}

void FitPalette(QWidget* widget, rgb_color background)
{
    const QColor color(background.red, background.green, background.blue);
    QPalette palette = QGuiApplication::palette();
    if (IsDark(color) != IsDark(palette.color(QPalette::Window))) {
        const QColor highlight = palette.color(QPalette::Highlight);
        const QColor highlighted = palette.color(QPalette::HighlightedText);
        palette = QPalette(color, color);
        palette.setColor(QPalette::Highlight, highlight);
        palette.setColor(QPalette::HighlightedText, highlighted);
    } else {
        palette.setColor(QPalette::Window, color);
    }
    if (palette != widget->palette())
        widget->setPalette(palette);
}

rgb_color ColorBehind(const BView* view)
{
    for (; view != nullptr; view = view->Parent()) {
        const rgb_color color = view->ViewColor();
        if (color != B_TRANSPARENT_COLOR)
            return color;
    }
    return ui_color(B_PANEL_BACKGROUND_COLOR);
}

void TakeParentColor(BView* view)
{
    view->SetViewColor(ColorBehind(view->Parent()));
    ViewImpl::Of(view).fHasParentColor = true;
}

void GetSizeHint(QWidget* widget, float* width, float* height)
{
    widget->ensurePolished();
    const QSize size = widget->sizeHint();
    if (width != nullptr)
        *width = static_cast<float>(size.width() - 1);
    if (height != nullptr)
        *height = static_cast<float>(size.height() - 1);
}

QString ToText(const char* text)
{
    return QString::fromUtf8(text == nullptr ? "" : text);
}

QString ToLabel(const char* text)
{
    return ToText(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace kits
