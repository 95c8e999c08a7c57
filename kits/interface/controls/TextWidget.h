// SPDX-License-Identifier: MIT
#pragma once

#include <QTextEdit>

namespace kits {

/// The text of a text view: Qt's, with tabs that form columns, and with a text that can be replaced every second.
class TextWidget : public QTextEdit {
public:
    TextWidget();

    /// Replaces the lines that differ; scroll position and selection stay.
    void TakeText(const QString& text);
    /// The rectangle of the text, in the coordinates of this widget.
    void SetTextRect(const QRect& rect);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void PlaceTabs();
};

} // namespace kits
