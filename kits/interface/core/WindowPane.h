// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"

#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace kits {

class WindowImpl;

/// The top-level widget of a window: passes the system's events to the window. Main thread.
class WindowPane : public QWidget {
public:
    explicit WindowPane(WindowImpl& impl);

    /// The window is destroyed; the widget deletes itself, now or when no code of its own is on the stack.
    void Release();
    /// Call it before the widget is shown: makes the system's window and watches its events.
    void WatchWindow();
    bool IsExposed() const;
    /// Brings the window to the front and asks for the keyboard focus. A window of the desktop stays in its layer, and
    /// accepts the focus only from this call until it loses it.
    void Activate();
    /// Does nothing before WatchWindow().
    void MoveToCurrentWorkspace();
    /// Null if the window is gone.
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
    rgb_color fDesktopColor{}; ///< the colour on which a window of the desktop was last painted
};

} // namespace kits
