// SPDX-License-Identifier: MIT
#include "tests/support/GuiTest.h"

#include "kits/application/EventLoop.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/interface/core/Drag.h"
#include "kits/interface/core/Pointer.h"
#include "kits/interface/core/UpdateQueue.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/drawing/TextBlend.h"
#include "kits/interface/startup/QtEventLoop.h"
#include "kits/kernel/Clock.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace test {

namespace {

uint32 sButtons = 0;
std::unique_ptr<Dragged> sDragged;
ulong sTimestamp = 1000;

Qt::MouseButtons ToQt(uint32 buttons)
{
    Qt::MouseButtons result = Qt::NoButton;
    if (buttons & B_PRIMARY_MOUSE_BUTTON)
        result |= Qt::LeftButton;
    if (buttons & B_SECONDARY_MOUSE_BUTTON)
        result |= Qt::RightButton;
    if (buttons & B_TERTIARY_MOUSE_BUTTON)
        result |= Qt::MiddleButton;
    return result;
}

void Send(BView* view, BPoint where, QEvent::Type type, uint32 changed, uint32 down)
{
    QWidget* const top = kits::WindowWidget(view->Window());
    const BPoint local = view->ConvertToWindow(where);
    const BPoint screen = view->ConvertToScreen(where);
    QMouseEvent event(type, QPointF(local.x, local.y), QPointF(local.x, local.y), QPointF(screen.x, screen.y),
                      static_cast<Qt::MouseButton>(ToQt(changed).toInt()), ToQt(down), Qt::NoModifier);
    // Late enough not to count as a double click; Click sends its two presses at one moment.
    event.setTimestamp(sTimestamp);
    QCoreApplication::sendEvent(top->windowHandle(), &event);
}

} // namespace

void Turn()
{
    for (int i = 0; i < 4; i++) {
        kits::EventLoop::RunDue();
        kits::UpdateQueue::Flush();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

bool WaitFor(const std::function<bool()>& condition)
{
    QElapsedTimer clock;
    clock.start();
    QTimer ticker;
    ticker.start(5);
    while (!condition()) {
        if (clock.elapsed() > 60000)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        // No event may have come: then one dispatcher returns without the lock, as it waited.
        static_cast<kits::QtEventLoop&>(kits::EventLoop::Current()).Held();
        kits::UpdateQueue::Flush();
    }
    return true;
}

void Show(BWindow* window)
{
    // Not all window managers give the focus to a window that is not new.
    const bool isNew = kits::WindowWidget(window)->windowHandle() == nullptr;
    window->Show();
    Turn();
    const kits::WindowImpl& impl = kits::WindowImpl::Of(window);
    WaitFor(
        [&] { return impl.fMinimized || (impl.CanShow() && (impl.fActive || !isNew) && !impl.fTracker.IsPending()); });
    Turn();
}

uint32 PixelOf(const BView* view, int32 x, int32 y)
{
    const kits::ViewImpl& impl = kits::ViewImpl::Of(view);
    const kits::Surface& surface = impl.fSurface;
    if (!surface.Exists() && impl.fWindow != nullptr && impl.fViewColor != B_TRANSPARENT_COLOR)
        return kits::ToWord(impl.fViewColor) | 0xFF000000;
    if (x < 0 || y < 0 || x >= surface.DeviceWidth() || y >= surface.DeviceHeight())
        return 0;
    return surface.Words()[y * surface.DeviceWidth() + x];
}

std::vector<uint32> PixelsOf(const BView* view)
{
    const kits::Surface& surface = kits::ViewImpl::Of(view).fSurface;
    const auto count = static_cast<size_t>(surface.DeviceWidth()) * static_cast<size_t>(surface.DeviceHeight());
    return {surface.Words(), surface.Words() + count};
}

uint32 PixelOf(BWindow* window, int32 x, int32 y)
{
    const QImage image = kits::WindowWidget(window)->grab().toImage();
    return image.pixel(x, y);
}

void Press(BView* view, BPoint where, uint32 buttons)
{
    sButtons |= buttons;
    Send(view, where, QEvent::MouseButtonPress, buttons, sButtons);
}

void MoveTo(BView* view, BPoint where)
{
    Send(view, where, QEvent::MouseMove, 0, sButtons);
}

void Release(BView* view, BPoint where)
{
    const uint32 released = sButtons;
    sButtons = 0;
    Send(view, where, QEvent::MouseButtonRelease, released, 0);
    sTimestamp += 10000;
}

void Click(BView* view, BPoint where, uint32 buttons)
{
    const ulong now = sTimestamp;
    Press(view, where, buttons);
    Release(view, where);
    sTimestamp = now + 1;
}

void Key(BWindow* window, char key, uint32 modifiers)
{
    int code = key;
    QString text;
    switch (key) {
    case B_ENTER:
        code = Qt::Key_Return;
        break;
    case B_TAB:
        code = Qt::Key_Tab;
        break;
    case B_ESCAPE:
        code = Qt::Key_Escape;
        break;
    case B_BACKSPACE:
        code = Qt::Key_Backspace;
        break;
    case B_LEFT_ARROW:
        code = Qt::Key_Left;
        break;
    case B_RIGHT_ARROW:
        code = Qt::Key_Right;
        break;
    case B_UP_ARROW:
        code = Qt::Key_Up;
        break;
    case B_DOWN_ARROW:
        code = Qt::Key_Down;
        break;
    default:
        code = QChar(QLatin1Char(key)).toUpper().unicode();
        text = QString(QLatin1Char(key));
        break;
    }
    Qt::KeyboardModifiers held;
    held.setFlag(Qt::ShiftModifier, (modifiers & B_SHIFT_KEY) != 0);
    held.setFlag(Qt::ControlModifier, (modifiers & B_COMMAND_KEY) != 0);
    QWidget* const top = kits::WindowWidget(window);
    QWidget* const focus = top->focusWidget() != nullptr ? top->focusWidget() : top;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, code, held, text);
        QCoreApplication::sendEvent(focus, &event);
    }
}

void CatchDrags()
{
    kits::Drag::SetRunner([](const kits::Drag::Request& request) {
        sDragged = std::make_unique<Dragged>(Dragged{request.message, request.rect, request.offset});
    });
}

std::unique_ptr<Dragged> TakeDrag()
{
    Turn();
    return std::move(sDragged);
}

void Drop(BView* view, const BMessage& message, BPoint where)
{
    BMessage dropped(message);
    kits::MessageAccess::SetDropped(dropped, view->ConvertToScreen(where), BPoint());
    view->Looper()->PostMessage(&dropped, view);
    Turn();
}

} // namespace test
