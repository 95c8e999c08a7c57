// SPDX-License-Identifier: MIT
#include "kits/interface/core/WindowKeys.h"

#include "kits/application/Application.h"
#include "kits/interface/Fields.h"

#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

namespace kits::WindowKeys {

namespace {

/// Destroyed with the window.
class Watcher : public QObject {
public:
    explicit Watcher(QWidget& window)
        : QObject(&window)
        , fWindow(window)
    {
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        return event->type() == QEvent::KeyPress && Handle(*static_cast<QKeyEvent*>(event), fWindow);
    }

private:
    QWidget& fWindow;
};

} // namespace

bool Handle(const QKeyEvent& event, QWidget& window)
{
    const bool isQuit = event.key() == Qt::Key_Q;
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::ControlModifier || (!isQuit && event.key() != Qt::Key_W))
        return false;
    if (event.isAutoRepeat())
        return true;
    if (!isQuit) {
        window.close();
    } else if (be_app != nullptr) {
        BMessage request(B_QUIT_REQUESTED);
        kits::kShortcutField.Add(&request, true);
        be_app->PostMessage(&request);
    }
    return true;
}

void Watch(QWidget& window)
{
    window.windowHandle()->installEventFilter(new Watcher(window));
}

} // namespace kits::WindowKeys
