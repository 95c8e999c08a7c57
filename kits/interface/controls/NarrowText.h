// SPDX-License-Identifier: MIT
#pragma once

#include <QFontMetrics>
#include <QString>
#include <QWidget>

namespace kits {

/// Narrows the letters of a widget whose text lacks the room that it needs: some per cent less are invisible, whereas a
/// truncated text is not.
namespace NarrowText {

/// The narrowest letters that do not look like another font; per cent.
inline constexpr int kNarrowest = 80;

inline int StretchOf(const QWidget* widget)
{
    const int stretch = widget->font().stretch();
    return stretch == QFont::AnyStretch ? QFont::Unstretched : stretch;
}

/// Returns the width of the text with this stretch.
inline int WidthOf(const QWidget* widget, const QString& text, int stretch)
{
    QFont stretched = widget->font();
    stretched.setStretch(stretch);
    return QFontMetrics(stretched).size(Qt::TextShowMnemonic, text).width();
}

/// Returns the size that a widget would ask for if its letters were not narrowed.
inline QSize Natural(const QWidget* widget, const QString& text, QSize size)
{
    size.rwidth() += WidthOf(widget, text, QFont::Unstretched) - WidthOf(widget, text, StretchOf(widget));
    return size;
}

/// Narrows the letters as far as the room for the text requires, or widens them again.
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
