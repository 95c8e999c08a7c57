// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/ManagerChange.h"

#include "kits/interface/platform/x11/XWindows.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace kits::ManagerChange {

namespace {

/// A window manager puts windows into frames of its own; when it ends, they are children of the root window again.
class Filter : public QObject, public QAbstractNativeEventFilter {
public:
    explicit Filter(xcb_connection_t* server)
        : QObject(qGuiApp)
        , fRoot(XWindows::Root(server))
    {
        qGuiApp->installNativeEventFilter(this);
    }

    void Add(QWidget& window, std::function<void(QPoint)> putBack)
    {
        std::erase_if(fWatched, [](const Watched& watched) { return watched.window == nullptr; });
        fWatched.push_back({&window, std::move(putBack), {}});
    }

    /// The toolkit selects these events of its windows.
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override
    {
        const auto* const event = static_cast<const xcb_reparent_notify_event_t*>(message);
        if ((event->response_type & ~XWindows::kSentByClient) != XCB_REPARENT_NOTIFY)
            return false;
        const auto watched = std::find_if(fWatched.begin(), fWatched.end(), [event](const Watched& one) {
            const QWindow* const window = one.window != nullptr ? one.window->windowHandle() : nullptr;
            return window != nullptr && window->handle() != nullptr && window->winId() == event->window;
        });
        if (watched == fWatched.end())
            return false;
        QWidget* const shown = watched->window;
        if (event->parent == fRoot) {
            // The toolkit has not learned of another place yet. A hidden window returns as well.
            watched->place = shown->isVisible() ? std::optional(shown->geometry().topLeft()) : std::nullopt;
        } else if (const std::optional<QPoint> place = std::exchange(watched->place, {})) {
            // Later, because the system's events come without the interface lock.
            QMetaObject::invokeMethod(
                shown, [putBack = watched->putBack, place] { putBack(*place); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    struct Watched {
        QPointer<QWidget> window;
        std::function<void(QPoint)> putBack;
        std::optional<QPoint> place; ///< of its content, while no window manager has it
    };

    const xcb_window_t fRoot;
    std::vector<Watched> fWatched;
};

/// Lives as long as the toolkit's application object; null before the first window.
QPointer<Filter> sFilter;

} // namespace

void Watch(QWidget& window, std::function<void(QPoint)> putBack)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr)
        return;
    if (sFilter == nullptr)
        sFilter = new Filter(server);
    sFilter->Add(window, std::move(putBack));
}

} // namespace kits::ManagerChange
