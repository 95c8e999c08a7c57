// SPDX-License-Identifier: MIT
#include "kits/interface/core/Pointer.h"

#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/ClickCounter.h"
#include "kits/interface/core/Drag.h"
#include "kits/interface/core/KeyInput.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/core/WindowPane.h"
#include "kits/kernel/Clock.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWindow>

namespace kits::Pointer {

namespace {

// In B_MOUSE_MOVED.
const Field<int32> kTransitField("transit", 0, 3);
const Field<void*> kDragField("drag"); ///< the dragged message, while it is handled

BPoint sWhere;
uint32 sButtons = 0;
uint32 sModifiers = 0;
BView* sInside = nullptr; ///< the view that contains the pointer
ClickCounter sClicks;

uint32 ButtonsOf(Qt::MouseButtons buttons)
{
    constexpr std::pair<Qt::MouseButton, uint32> kButtons[] = {{Qt::LeftButton, B_PRIMARY_MOUSE_BUTTON},
                                                               {Qt::RightButton, B_SECONDARY_MOUSE_BUTTON},
                                                               {Qt::MiddleButton, B_TERTIARY_MOUSE_BUTTON}};
    uint32 bits = 0;
    for (const auto& [button, bit] : kButtons)
        bits |= buttons.testFlag(button) ? bit : 0;
    return bits;
}

BPoint PointOf(const QPointF& point)
{
    return {static_cast<float>(std::floor(point.x())), static_cast<float>(std::floor(point.y()))};
}

std::unique_ptr<BMessage> MakeMessage(uint32 what, BPoint where)
{
    auto message = std::make_unique<BMessage>(what);
    kWhereField.Add(message.get(), where);
    kButtonsField.Add(message.get(), static_cast<int32>(sButtons));
    kModifiersField.Add(message.get(), static_cast<int32>(sModifiers));
    kWhenField.Add(message.get(), system_time());
    return message;
}

void Deliver(BView* view, std::unique_ptr<BMessage> message)
{
    if (view->Window() != nullptr)
        view->Window()->DeliverNow(std::move(message), view);
}

void TellTransit(BView* view, BPoint screenPoint, uint32 transit, const BMessage* dragMessage)
{
    std::unique_ptr<BMessage> message = MakeMessage(B_MOUSE_MOVED, view->ConvertFromScreen(screenPoint));
    kTransitField.Add(message.get(), static_cast<int32>(transit));
    // The message lives until this returns, and so does the delivery.
    if (dragMessage != nullptr)
        kDragField.Add(message.get(), const_cast<BMessage*>(dragMessage));
    Deliver(view, std::move(message));
}

WindowImpl* WindowOf(const QObject* receiver)
{
    for (WindowImpl* window : WindowImpl::All())
        if (window->fPane->windowHandle() == receiver)
            return window;
    return nullptr;
}

/// Notifies views of a move or a press in a window.
void WatchWindow(const QObject* receiver, QEvent::Type type)
{
    // Over an open menu, the pointer is in none of our views.
    WindowImpl* const impl = QApplication::activePopupWidget() == nullptr ? WindowOf(receiver) : nullptr;
    BWindow* const window = impl != nullptr ? impl->fWindow : nullptr;
    // The view may have moved under a resting pointer.
    const bool isMove = type == QEvent::MouseMove;
    const bool isPress = type == QEvent::MouseButtonPress && window != nullptr;
    if (isMove || (isPress && window->FindView(window->ConvertFromScreen(sWhere)) != sInside))
        Moved(window, sWhere, nullptr);
}

} // namespace

BPoint Where()
{
    return sWhere;
}

uint32 Buttons()
{
    return sButtons;
}

void Moved(BWindow* window, BPoint screenPoint, const BMessage* dragMessage)
{
    BView* const now = window != nullptr ? window->FindView(window->ConvertFromScreen(screenPoint)) : nullptr;
    BView* const before = sInside;
    sInside = now;
    if (before != nullptr && before != now)
        TellTransit(before, screenPoint, B_EXITED_VIEW, dragMessage);
    // The hook may have removed it.
    if (now != nullptr && sInside == now)
        TellTransit(now, screenPoint, before == now ? B_INSIDE_VIEW : B_ENTERED_VIEW, dragMessage);
}

void Watch(QObject* receiver, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick: {
        const auto& mouse = static_cast<const QMouseEvent&>(*event);
        sWhere = PointOf(mouse.globalPosition());
        sButtons = ButtonsOf(mouse.buttons());
        sModifiers = KeyInput::ModifiersOf(mouse.modifiers());
        if (event->type() == QEvent::MouseButtonRelease && Drag::IsUnderWay())
            Drag::NoteRelease(sWhere);
        else if (event->type() == QEvent::MouseMove && Drag::IsUnderWay())
            Drag::NoteMove(sWhere);
        // A widget gets a copy of its window's event.
        if (receiver->isWindowType() && !Drag::IsUnderWay())
            WatchWindow(receiver, event->type());
        break;
    }
    case QEvent::Leave:
        // The place is queried, not taken from the event: a leave also comes when something grabs the pointer.
        if (const WindowImpl* window = WindowOf(receiver); window != nullptr && !Drag::IsUnderWay()) {
            sWhere = PointOf(QCursor::pos());
            const BRect content = window->fWindow->Bounds();
            if (!content.Contains(window->fWindow->ConvertFromScreen(sWhere)))
                Moved(nullptr, sWhere, nullptr);
        }
        break;
    case QEvent::KeyPress:
        if (Drag::IsUnderWay() && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape)
            Drag::NoteEscape();
        [[fallthrough]];
    case QEvent::KeyRelease:
        sModifiers = KeyInput::ModifiersOf(static_cast<const QKeyEvent*>(event)->modifiers());
        break;
    default:
        break;
    }
}

void AskSystem()
{
    sWhere = PointOf(QCursor::pos());
    sButtons = ButtonsOf(QGuiApplication::mouseButtons());
    sModifiers = KeyInput::ModifiersOf(QGuiApplication::queryKeyboardModifiers());
}

void Press(ViewImpl& view, const QMouseEvent& event)
{
    const QStyleHints* hints = QGuiApplication::styleHints();
    const BPoint where = PointOf(event.globalPosition());
    sButtons = ButtonsOf(event.buttons());
    const int32 clicks =
        sClicks.Count(view.fView, ButtonsOf(event.button()), where, static_cast<bigtime_t>(event.timestamp()) * 1000,
                      static_cast<bigtime_t>(hints->mouseDoubleClickInterval()) * 1000,
                      static_cast<float>(hints->mouseDoubleClickDistance()));
    std::unique_ptr<BMessage> message = MakeMessage(B_MOUSE_DOWN, view.fView->ConvertFromScreen(where));
    kClicksField.Add(message.get(), clicks);
    Deliver(view.fView, std::move(message));
}

void Release(ViewImpl& view, const QMouseEvent& event)
{
    sButtons = ButtonsOf(event.buttons());
    Deliver(view.fView, MakeMessage(B_MOUSE_UP, view.fView->ConvertFromScreen(PointOf(event.globalPosition()))));
}

bool Dispatch(const BMessage& message, BView& view)
{
    BPoint where;
    switch (message.what) {
    case B_MOUSE_DOWN:
    case B_MOUSE_UP:
        if (!kWhereField.Find(message, &where))
            return false;
        if (message.what == B_MOUSE_DOWN)
            view.MouseDown(where);
        else
            view.MouseUp(where);
        return true;
    case B_MOUSE_MOVED: {
        int32 transit = B_INSIDE_VIEW;
        if (!kWhereField.Find(message, &where) || !kTransitField.Find(message, &transit))
            return false;
        view.MouseMoved(where, static_cast<uint32>(transit), static_cast<const BMessage*>(kDragField.Get(message)));
        return true;
    }
    case B_KEY_DOWN: {
        std::string bytes;
        if (!kBytesField.Find(message, &bytes))
            return false;
        view.KeyDown(bytes.c_str(), static_cast<int32>(bytes.size()));
        return true;
    }
    default:
        return false;
    }
}

void Forget(const BView* view)
{
    if (sInside == view)
        sInside = nullptr;
    sClicks.Forget(view);
}

} // namespace kits::Pointer
