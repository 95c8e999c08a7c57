// SPDX-License-Identifier: MIT
#pragma once

#include <QFontMetrics>
#include <QString>
#include <QWidget>

namespace kits {

/// Letters of a widget that are narrowed where its text has not the room that it asks for: some per cent less are not
/// seen, and a text that is cut off is.
namespace NarrowText {

/// How narrow letters may become before they read as another font; per cent.
inline constexpr int kNarrowest = 80;

inline int StretchOf(const QWidget* widget)
{
    const int stretch = widget->font().stretch();
    return stretch == QFont::AnyStretch ? QFont::Unstretched : stretch;
}

/// How wide the text is with this stretch.
inline int WidthOf(const QWidget* widget, const QString& text, int stretch)
{
    QFont stretched = widget->font();
    stretched.setStretch(stretch);
    return QFontMetrics(stretched).size(Qt::TextShowMnemonic, text).width();
}

/// What a size that a widget asks for would be if its letters were not narrowed.
inline QSize Natural(const QWidget* widget, const QString& text, QSize size)
{
    size.rwidth() += WidthOf(widget, text, QFont::Unstretched) - WidthOf(widget, text, StretchOf(widget));
    return size;
}

/// Narrows the letters as far as the room for the text asks for, or widens them again.
inline void Fit(QWidget* widget, const QString& text, int room)
{
    int stretch = QFont::Unstretched;
    while (stretch > kNarrowest && WidthOf(widget, text, stretch) > room)
        stretch--;
    if (stretch == StretchOf(widget))
        return;
    QFont fitting = widget->font();
    fitting.setStretch(stretch);
    widget->setFont(fitting);
}

} // namespace NarrowText

} // namespace kits
