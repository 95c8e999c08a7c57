// SPDX-License-Identifier: MIT
#include "kits/interface/controls/TextWidget.h"

#include "kits/interface/drawing/TextColumns.h"

#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <QTextBlock>

#include <algorithm>
#include <vector>

namespace {

constexpr int kDigitsPerTab = 8;

void ReplaceText(const QTextBlock& block, const QString& text)
{
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.insertText(text);
}

} // namespace

namespace kits {

TextWidget::TextWidget()
{
    setFrameStyle(QFrame::NoFrame);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setLineWrapMode(QTextEdit::FixedPixelWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDocumentMargin(0);
}

void TextWidget::TakeText(const QString& text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    const int scrolled = verticalScrollBar()->value();
    const int position = textCursor().position();
    const int anchor = textCursor().anchor();
    QTextCursor edit(document());
    edit.beginEditBlock();
    QTextBlock block = document()->begin();
    qsizetype line = 0;
    for (; line < lines.size() && block.isValid(); line++, block = block.next())
        if (block.text() != lines[line])
            ReplaceText(block, lines[line]);
    if (block.isValid()) {
        edit.setPosition(block.position() - 1);
        edit.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
        edit.removeSelectedText();
    }
    if (line < lines.size()) {
        edit.movePosition(QTextCursor::End);
        for (; line < lines.size(); line++) {
            edit.insertBlock();
            edit.insertText(lines[line]);
        }
    }
    edit.endEditBlock();
    PlaceTabs();
    // The insertion point has run ahead of the lines that were set, and the view has followed it.
    const int end = document()->characterCount() - 1;
    QTextCursor insertion(document());
    insertion.setPosition(std::min(anchor, end));
    insertion.setPosition(std::min(position, end), QTextCursor::KeepAnchor);
    setTextCursor(insertion);
    verticalScrollBar()->setValue(scrolled);
}

void TextWidget::PlaceTabs()
{
    const QFontMetricsF metrics(font());
    std::vector<std::vector<double>> cells;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        std::vector<double>& widths = cells.emplace_back();
        for (const QString& cell : block.text().split(QLatin1Char('\t')))
            widths.push_back(metrics.horizontalAdvance(cell));
    }
    const double unit = std::max(1.0, kDigitsPerTab * metrics.horizontalAdvance(QLatin1Char('0')));
    const auto stops = TabStops(cells, unit, metrics.horizontalAdvance(QLatin1Char(' ')));

    QTextBlock block = document()->begin();
    for (std::size_t line = 0; block.isValid(); line++, block = block.next()) {
        QList<QTextOption::Tab> tabs;
        for (const double stop : stops[line])
            tabs.append(QTextOption::Tab(stop, QTextOption::LeftTab));
        QTextBlockFormat format = block.blockFormat();
        if (format.tabPositions() == tabs)
            continue;
        format.setTabPositions(tabs);
        QTextCursor(block).setBlockFormat(format);
    }
}

void TextWidget::SetTextRect(const QRect& rect)
{
    setViewportMargins(std::max(rect.left(), 0), std::max(rect.top(), 0), 0, 0);
    setLineWrapColumnOrWidth(std::max(rect.width(), 1));
}

void TextWidget::paintEvent(QPaintEvent* event)
{
    QTextEdit::paintEvent(event);
    // No cursor shows where the keys go.
    if (!hasFocus() || (textInteractionFlags() & (Qt::TextEditable | Qt::TextSelectableByKeyboard)) != 0)
        return;
    QPainter painter(viewport());
    QStyleOptionFocusRect option;
    option.initFrom(viewport());
    option.backgroundColor = palette().color(QPalette::Base);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void TextWidget::changeEvent(QEvent* event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        PlaceTabs();
}

} // namespace kits
