// SPDX-License-Identifier: MIT
#include "kits/interface/core/DragCursor.h"

#include "kits/interface/platform/x11/DesktopPlace.h"
#include "kits/interface/platform/x11/XWindows.h"

#include <QCursor>
#include <QGuiApplication>

#include <vector>

namespace kits {

namespace {

/// Short enough for the eye.
constexpr int kPause = 20; // milliseconds

void Show(Qt::CursorShape shape)
{
    const QCursor* const cursor = QGuiApplication::overrideCursor();
    // The toolkit sets one when the drag begins, and removes it at the end.
    if (cursor != nullptr && cursor->shape() != shape)
        QGuiApplication::changeOverrideCursor(QCursor(shape));
}

} // namespace

DragCursor::DragCursor(DragCourse::Taker taker, bool isMove)
    : fTaker(taker)
    , fIsMove(isMove)
{
    xcb_connection_t* const server = XServer();
    if (server == nullptr || taker == DragCourse::Taker::kPrograms)
        return;
    const std::vector<xcb_atom_t> atoms =
        XWindows::Atoms(server, {"XdndStatus", fIsMove ? "XdndActionMove" : "XdndActionCopy"});
    fStatus = atoms[0];
    fAction = atoms[1];
    fLook.setSingleShot(true);
    connect(&fLook, &QTimer::timeout, this, [this] { Look(); });
    qGuiApp->installNativeEventFilter(this);
}

void DragCursor::Moved(BPoint where)
{
    fWhere = where;
    if (fStatus != 0 && !fLook.isActive())
        fLook.start(kPause);
}

void DragCursor::Look()
{
    const bool wasTaken = fIsTaken;
    fIsTaken = DragCourse::IsTaken(fTaker, DesktopLayer::GroundAt(fWhere));
    if (fIsTaken)
        Show(fIsMove ? Qt::DragMoveCursor : Qt::DragCopyCursor);
    else if (wasTaken)
        Show(Qt::ForbiddenCursor);
}

bool DragCursor::IsOfDesktop(uint32_t window)
{
    const auto known = fIsOfDesktop.find(window);
    if (known != fIsOfDesktop.end())
        return known->second;
    const bool isOfDesktop = DragCourse::IsTaken(fTaker, DesktopPlace::GroundOf(XServer(), window));
    fIsOfDesktop.emplace(window, isOfDesktop);
    return isOfDesktop;
}

bool DragCursor::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    constexpr uint32_t kAccepted = 1;
    auto* event = static_cast<xcb_client_message_event_t*>(message);
    // A window that refuses must not be sent a drop, however soon the button is released over it.
    if ((event->response_type & ~XWindows::kSentByClient) != XCB_CLIENT_MESSAGE || event->type != fStatus ||
        !IsOfDesktop(event->data.data32[0]))
        return false;
    event->data.data32[1] |= kAccepted;
    event->data.data32[4] = fAction;
    return false;
}

} // namespace kits
