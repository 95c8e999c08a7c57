// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"

#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace kits {

class WindowImpl;

/// The top-level widget of a window: hands what the system says to the window. Main thread.
class WindowPane : public QWidget {
public:
    explicit WindowPane(WindowImpl& impl);

    /// The window goes; the widget deletes itself, now or when nothing of it is on the stack.
    void Release();
    /// To be called before the widget is shown: makes the system's window and listens to it.
    void WatchWindow();
    bool IsExposed() const;
    /// Brings the window to the front and asks for the keyboard. One of the desktop stays where it is, and takes the
    /// keyboard only from here until it loses it.
    void Activate();
    /// Nothing happens before WatchWindow().
    void MoveToCurrentWorkspace();
    /// Null when the window is gone.
    WindowImpl* Impl() const { return fImpl; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    bool IsOfDesktop() const;
    bool IsOfItsScale(QEvent::Type report);
    void AcceptFocus(bool accept);

    WindowImpl* fImpl;
    QPointer<QWindow> fWatched;
    rgb_color fDesktopColor{}; ///< what a window of the desktop was last painted on
};

} // namespace kits
