// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace kits {

class ViewImpl;

/// The widget of a view: shows its picture and passes on input. Main thread, with the interface lock held.
class ViewPane : public QWidget {
public:
    ViewPane(ViewImpl& impl, QWidget* parent);

    /// The view is destroyed; the widget deletes itself, now or when no code of its own is on the stack. Any thread.
    void Release();
    void LeaveWindow();
    /// Null if the view is gone.
    ViewImpl* Impl() const { return fImpl; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void RequestMenu();
    bool UseClipboard(const QKeyEvent& event);

    ViewImpl* fImpl;
};

/// Hides a widget and deletes it: at once, or later if code of its events may be on the stack.
void DeleteWidget(QWidget* widget);

} // namespace kits
