// SPDX-License-Identifier: MIT
#pragma once

#include <QTextEdit>

namespace kits {

/// The text of a text view: Qt's, with tabs that stand in columns, and with a text that can be set anew each second.
class TextWidget : public QTextEdit {
public:
    TextWidget();

    /// Changes the lines that differ; place and selection stay.
    void TakeText(const QString& text);
    /// The rectangle that the text has, in the coordinates of this widget.
    void SetTextRect(const QRect& rect);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void PlaceTabs();
};

} // namespace kits
