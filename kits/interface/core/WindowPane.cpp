// SPDX-License-Identifier: MIT
#include "kits/interface/core/WindowPane.h"

#include "kits/application/delivery/MainThreadPrivate.h"
#include "kits/interface/core/Drag.h"
#include "kits/interface/core/ScaleWatch.h"
#include "kits/interface/core/ViewPane.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/core/WindowKeys.h"
#include "kits/interface/platform/DesktopColor.h"
#include "kits/interface/platform/Display.h"
#include "kits/interface/platform/x11/DesktopLayer.h"
#include "kits/interface/platform/x11/ManagerChange.h"
#include "kits/interface/platform/x11/StayShown.h"

#include <QCloseEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMoveEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>

#include <algorithm>
#include <vector>

namespace kits {

namespace {

/// The background that shines through them has changed.
void RepaintDesktopWindows()
{
    for (const WindowImpl* window : WindowImpl::All())
        if (window->fSettings.feel == B_DESKTOP_WINDOW_FEEL)
            window->fPane->update();
}

Qt::WindowFlags FlagsOf(const WindowImpl::Settings& settings)
{
    Qt::WindowFlags flags = Qt::Window;
    if (settings.feel == B_DESKTOP_WINDOW_FEEL && Display::IsWayland())
        return flags | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowMinimizeButtonHint;
    if (settings.feel == B_DESKTOP_WINDOW_FEEL || settings.flags & B_AVOID_FOCUS)
        flags |= Qt::WindowDoesNotAcceptFocus;
    if (settings.feel == B_DESKTOP_WINDOW_FEEL)
        flags |= Qt::WindowStaysOnBottomHint;
    switch (settings.look) {
    case B_NO_BORDER_WINDOW_LOOK:
    case B_BORDERED_WINDOW_LOOK:
        return flags | Qt::FramelessWindowHint;
    case B_MODAL_WINDOW_LOOK:
        // No buttons. A modal window is a dialog, and can be closed as dialogs can.
        if (settings.feel != B_MODAL_APP_WINDOW_FEEL)
            return flags | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
        flags |= Qt::Dialog;
        break;
    case B_FLOATING_WINDOW_LOOK:
        flags |= Qt::Tool;
        break;
    default:
        break;
    }
    if (settings.flags & (B_NOT_CLOSABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE)) {
        flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
        if (!(settings.flags & B_NOT_CLOSABLE))
            flags |= Qt::WindowCloseButtonHint;
        if (!(settings.flags & B_NOT_ZOOMABLE))
            flags |= Qt::WindowMaximizeButtonHint;
        if (!(settings.flags & B_NOT_MINIMIZABLE))
            flags |= Qt::WindowMinimizeButtonHint;
    }
    return flags;
}

Zoom ZoomOf(Qt::WindowStates states)
{
    if (states & Qt::WindowFullScreen)
        return Zoom::kFullScreen;
    return states & Qt::WindowMaximized ? Zoom::kMaximized : Zoom::kNone;
}

/// Collects the widgets that can take the focus, in the order of the views. The toolkit's own order is that of
/// creation, and views may come late, such as a page when it is first shown.
void AddStops(const QWidget& within, std::vector<QWidget*>& stops)
{
    for (QObject* const object : within.children()) {
        auto* const widget = qobject_cast<QWidget*>(object);
        if (widget == nullptr || widget->isWindow() || !widget->isVisible() || !widget->isEnabled())
            continue;
        if (widget->focusProxy() == nullptr && widget->focusPolicy() & Qt::TabFocus)
            stops.push_back(widget);
        AddStops(*widget, stops);
    }
}

} // namespace

WindowPane::WindowPane(WindowImpl& impl)
    : QWidget(nullptr, FlagsOf(impl.fSettings))
    , fImpl(&impl)
{
    setWindowTitle(QString::fromStdString(impl.fSettings.title));
    if (impl.fSettings.feel == B_MODAL_APP_WINDOW_FEEL)
        setWindowModality(Qt::ApplicationModal);
    if (IsOfDesktop()) {
        setAttribute(Qt::WA_TranslucentBackground);
        setAttribute(Qt::WA_ShowWithoutActivating);
    }
    setAcceptDrops(true);
}

bool WindowPane::IsOfDesktop() const
{
    return fImpl != nullptr && fImpl->fSettings.feel == B_DESKTOP_WINDOW_FEEL;
}

void WindowPane::Release()
{
    fImpl = nullptr;
    if (fWatched != nullptr)
        fWatched->removeEventFilter(this);
    DeleteWidget(this);
}

void WindowPane::WatchWindow()
{
    if (fWatched != nullptr)
        return;
    create();
    fWatched = windowHandle();
    fWatched->installEventFilter(this);
    if (Display::IsWayland())
        fImpl->fTracker.SetPlaceless();
    if (IsOfDesktop()) {
        DesktopLayer::MarkAsDesktopWindow(*fWatched);
        StayShown::Keep(*fWatched);
        DesktopLayer::WatchCompositor(RepaintDesktopWindows);
    } else
        ManagerChange::Watch(*this, [this](QPoint place) {
            if (fImpl != nullptr)
                fImpl->PutBack(place.x(), place.y());
        });
    if (fImpl->fSettings.look == B_MODAL_WINDOW_LOOK && fImpl->fSettings.feel != B_MODAL_APP_WINDOW_FEEL)
        DesktopLayer::ShowBorderOnly(*fWatched);
    if (IsOfDesktop() || fImpl->fSettings.workspaces == B_ALL_WORKSPACES)
        DesktopLayer::ShowOnAllWorkspaces(*fWatched);
    connect(fWatched, &QWindow::screenChanged, this, [this] {
        if (fImpl != nullptr)
            fImpl->CheckScale();
    });
}

bool WindowPane::IsExposed() const
{
    return fWatched != nullptr && fWatched->isExposed();
}

void WindowPane::Activate()
{
    if (IsOfDesktop())
        AcceptFocus(true);
    else
        raise();
    activateWindow();
}

// Sets this on the system's window only: on the widget, the toolkit would recreate the window.
void WindowPane::AcceptFocus(bool accept)
{
    if (fWatched != nullptr && !Display::IsWayland()) {
        fWatched->setFlag(Qt::WindowDoesNotAcceptFocus, !accept);
        StayShown::LookAgain();
    }
}

void WindowPane::MoveToCurrentWorkspace()
{
    if (fWatched != nullptr)
        DesktopLayer::MoveToCurrentWorkspace(*fWatched);
}

bool WindowPane::event(QEvent* event)
{
    if (fImpl == nullptr && event->type() != QEvent::DeferredDelete)
        return true;
    return QWidget::event(event);
}

bool WindowPane::IsOfItsScale(QEvent::Type report)
{
    if (report != QEvent::Resize && report != QEvent::Move && report != QEvent::Expose)
        return true;
    if (ScaleWatch::ScaleOf(*this) == fImpl->Scale())
        return true;
    // The toolkit uses a new scale that the window has not followed yet: the window still has its old pixels.
    ScaleWatch::Changed();
    return report == QEvent::Expose;
}

bool WindowPane::eventFilter(QObject* watched, QEvent* event)
{
    // The system's own reports. The widget's own events come at once when it is resized, confirmed or not.
    if (fImpl != nullptr && watched == fWatched && IsOfItsScale(event->type())) {
        switch (event->type()) {
        case QEvent::Resize: {
            const QSize size = static_cast<QResizeEvent*>(event)->size();
            fImpl->SizeReported(size.width(), size.height());
            break;
        }
        case QEvent::Move: {
            // Where windows cannot know their place, the system reports none.
            if (Display::IsWayland())
                break;
            const QPoint place = static_cast<QMoveEvent*>(event)->pos();
            fImpl->PlaceReported(place.x(), place.y());
            break;
        }
        case QEvent::KeyPress:
            if (WindowKeys::Handle(*static_cast<QKeyEvent*>(event), *this))
                return true;
            break;
        case QEvent::Expose:
            fImpl->ExposeReported();
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void WindowPane::paintEvent(QPaintEvent* event)
{
    if (!IsOfDesktop() || DesktopLayer::HasCompositor())
        return;
    const rgb_color color = DesktopColor::Get();
    // The old painting shows another colour.
    if (color != fDesktopColor)
        update();
    fDesktopColor = color;
    QPainter(this).fillRect(event->rect(), QColor(color.red, color.green, color.blue));
}

void WindowPane::closeEvent(QCloseEvent* event)
{
    // The window decides, and closes by itself.
    event->ignore();
    if (!(fImpl->fSettings.flags & B_NOT_CLOSABLE))
        fImpl->fWindow->PostMessage(B_QUIT_REQUESTED);
}

void WindowPane::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::WindowStateChange)
        fImpl->StateReported(isMinimized(), ZoomOf(windowState()));
    else if (event->type() == QEvent::ActivationChange) {
        if (IsOfDesktop() && !isActiveWindow())
            AcceptFocus(false);
        fImpl->ActivationReported(isActiveWindow());
    }
    QWidget::changeEvent(event);
}

void WindowPane::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && fImpl->fPressDefault != nullptr) {
        const DispatchScope scope;
        fImpl->fPressDefault();
        return;
    }
    QWidget::keyPressEvent(event);
}

bool WindowPane::focusNextPrevChild(bool next)
{
    std::vector<QWidget*> stops;
    AddStops(*this, stops);
    // With a single widget, the key is the view's.
    if (stops.size() < 2)
        return false;
    const auto current = std::find(stops.begin(), stops.end(), focusWidget());
    if (next)
        (current == stops.end() || current + 1 == stops.end() ? stops.front() : current[1])
            ->setFocus(Qt::TabFocusReason);
    else
        (current == stops.end() || current == stops.begin() ? stops.back() : current[-1])
            ->setFocus(Qt::BacktabFocusReason);
    return true;
}

void WindowPane::dragEnterEvent(QDragEnterEvent* event)
{
    if (Drag::Entered(*event))
        event->acceptProposedAction();
}

void WindowPane::dragMoveEvent(QDragMoveEvent* event)
{
    event->setAccepted(Drag::Over(*fImpl, *event));
}

void WindowPane::dragLeaveEvent(QDragLeaveEvent*)
{
    Drag::Left();
}

void WindowPane::dropEvent(QDropEvent* event)
{
    if (Drag::Dropped(*fImpl, *event))
        event->acceptProposedAction();
    else
        event->ignore();
}

} // namespace kits
