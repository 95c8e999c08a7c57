// SPDX-License-Identifier: MIT
#include "kits/interface/core/ScaleWatch.h"

#include "kits/interface/core/ScreenList.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/core/WindowPane.h"
#include "kits/interface/platform/Display.h"
#include "kits/interface/platform/x11/XSettings.h"
#include "kits/interface/platform/x11/XWindows.h"

#include <QApplication>
#include <QBackingStore>
#include <QMoveEvent>
#include <QPixmapCache>
#include <QPointer>
#include <QResizeEvent>
#include <QScreen>
#include <QWindow>

#include <utility>
#include <vector>

namespace kits::ScaleWatch {

namespace {

bool sIsDue = false;
/// The last known scale of the toolkit's own windows.
double sScale = 1;

double MainScale()
{
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->devicePixelRatio() : sScale;
}

/// The toolkit compares logical sizes: at the first scale other than 1 it would keep its picture, which has another
/// size in pixels. This makes the toolkit discard the picture and make a new one before the next painting, also in a
/// minimised window; nothing writes to it until then. When a window comes to a screen, the toolkit paints it whole and
/// recomputes everything that depends on the screen.
void PaintAnew(QWidget& widget)
{
    if (QBackingStore* const store = widget.backingStore())
        store->resize(QSize(1, 1));
    QWindow& window = *widget.windowHandle();
    emit window.screenChanged(window.screen());
}

void RescaleToolkitsOwn()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        QWindow* const window = widget->windowHandle();
        if (window == nullptr || window->handle() == nullptr || dynamic_cast<WindowPane*>(widget) != nullptr)
            continue;
        if (widget->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) {
            KeepSystemSize(*widget);
            continue;
        }
        const QRect frame = widget->geometry();
        const PixelRect place = ScreenList::PutInReach(
            {frame.left(), frame.top(), frame.left() + frame.width(), frame.top() + frame.height()},
            window->frameMargins().top());
        SetGeometry(*widget, QRect(place.left, place.top, place.Width(), place.Height()));
    }
}

void WatchOne(QScreen* screen)
{
    QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, qGuiApp, Changed);
    QObject::connect(screen, &QScreen::geometryChanged, qGuiApp, Changed);
    QObject::connect(screen, &QScreen::availableGeometryChanged, qGuiApp, Changed);
}

} // namespace

void Start()
{
    sScale = MainScale();
    for (QScreen* screen : QGuiApplication::screens())
        WatchOne(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, qGuiApp, WatchOne);
    XSettingsWatch::CallOnChange(Follow);
}

void Follow()
{
    sIsDue = false;
    ScreenList::Read();
    const bool isNew = std::exchange(sScale, MainScale()) != MainScale();
    // Styles draw the parts of controls once, and look them up without regard to the scale.
    if (isNew)
        QPixmapCache::clear();
    // A hook may close windows.
    std::vector<QPointer<WindowPane>> panes;
    for (const WindowImpl* window : WindowImpl::All())
        panes.emplace_back(window->fPane);
    for (const QPointer<WindowPane>& pane : panes) {
        if (pane != nullptr && pane->Impl() != nullptr)
            pane->Impl()->CheckScale();
        if (pane != nullptr && pane->Impl() != nullptr)
            pane->Impl()->CheckPlace();
    }
    if (isNew)
        RescaleToolkitsOwn();
}

void Changed()
{
    // The system's reports come outside of any event, and so without the interface lock.
    if (!std::exchange(sIsDue, true))
        QMetaObject::invokeMethod(qGuiApp, Follow, Qt::QueuedConnection);
}

PixelRect ScreenOf(const QWidget& widget)
{
    const QRect room = widget.screen()->availableGeometry();
    return {room.left(), room.top(), room.left() + room.width(), room.top() + room.height()};
}

bool IsButtonDown()
{
    xcb_connection_t* const server = XServer();
    return server != nullptr ? XWindows::IsButtonDown(server) : QGuiApplication::mouseButtons() != Qt::NoButton;
}

double ScaleOf(const QWidget& widget)
{
    // On Wayland windows have scales of their own. Elsewhere the toolkit may learn of its windows' scale later.
    static const bool isWayland = Display::IsWayland();
    const QScreen* const screen = widget.screen();
    return isWayland || screen == nullptr ? widget.devicePixelRatioF() : screen->devicePixelRatio();
}

void SetGeometry(QWidget& widget, const QRect& geometry)
{
    widget.windowHandle()->setGeometry(geometry);
    PaintAnew(widget);
}

void KeepSystemSize(QWidget& widget)
{
    QWindow& window = *widget.windowHandle();
    QResizeEvent resized(window.size(), widget.size());
    QCoreApplication::sendEvent(&window, &resized);
    QMoveEvent moved(window.position(), widget.pos());
    QCoreApplication::sendEvent(&window, &moved);
    PaintAnew(widget);
}

} // namespace kits::ScaleWatch
