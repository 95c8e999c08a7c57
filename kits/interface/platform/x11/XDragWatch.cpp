// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/XDragWatch.h"

#include "kits/application/MainThread.h"
#include "kits/interface/platform/selections/ForeignOffer.h"
#include "kits/interface/platform/x11/XWindows.h"

#include <QGuiApplication>

#include <utility>

namespace kits {

namespace {

/// For actions of the main thread, which may run after it is gone.
XDragWatch* sWatch = nullptr;

} // namespace

XDragWatch::XDragWatch(std::function<ForeignOffer*()> offer)
    : fServer(XServer())
    , fOffer(std::move(offer))
{
    // The answers are collected when the first message comes, so no start waits for them.
    fAsked = XWindows::AskAtoms(fServer, {"XdndEnter", "XdndPosition", "XdndDrop", "XdndLeave", "XdndFinished"});
    qGuiApp->installNativeEventFilter(this);
    sWatch = this;
}

XDragWatch::~XDragWatch()
{
    sWatch = nullptr;
    TakeAtoms();
}

void XDragWatch::TakeAtoms()
{
    if (fAtoms.empty())
        fAtoms = XWindows::TakeAtoms(fServer, fAsked);
}

bool XDragWatch::nativeEventFilter(const QByteArray&, void* event, qintptr*)
{
    const auto& message = *static_cast<const xcb_client_message_event_t*>(event);
    if ((message.response_type & ~XWindows::kSentByClient) != XCB_CLIENT_MESSAGE || message.format != 32)
        return false;
    TakeAtoms();
    const uint32_t* const data = message.data.data32;
    if (message.type == fAtoms[kEnter]) {
        RefuseHeld();
        fDrag = {fDrag.number + 1, data[0], XCB_CURRENT_TIME, (data[1] & 1) != 0, {data[2], data[3], data[4]}};
    } else if (data[0] == fDrag.source && message.type == fAtoms[kPosition]) {
        fDrag.time = data[3];
    } else if (data[0] == fDrag.source && message.type == fAtoms[kLeave]) {
        fHeld.reset();
    } else if (data[0] == fDrag.source && message.type == fAtoms[kDrop]) {
        if (!std::exchange(fIsReleasing, false))
            return Hold(message);
    }
    return false;
}

bool XDragWatch::Hold(const xcb_client_message_event_t& drop)
{
    // A second drop of the same drag counts as none.
    if (fHeld.has_value())
        return true;
    const ForeignOffer* const offer = fOffer();
    if (offer == nullptr || offer->IsReadyForDrop())
        return false;
    fDrag.time = drop.data.data32[2];
    fHeld = drop;
    fHolds++;
    // The display's events come without the interface lock.
    RunOnMainThread([] {
        if (sWatch != nullptr)
            sWatch->FetchForHeld();
    });
    return true;
}

void XDragWatch::FetchForHeld()
{
    ForeignOffer* const offer = fOffer();
    if (!fHeld.has_value())
        return;
    if (offer == nullptr) {
        Release();
        return;
    }
    offer->FetchForDrop([hold = fHolds] {
        if (sWatch != nullptr && sWatch->fHolds == hold)
            sWatch->Release();
    });
}

void XDragWatch::Release()
{
    if (!fHeld.has_value())
        return;
    const xcb_client_message_event_t drop = *fHeld;
    fHeld.reset();
    fIsReleasing = true;
    Send(drop.window, drop);
}

void XDragWatch::RefuseHeld()
{
    fIsReleasing = false;
    if (!fHeld.has_value())
        return;
    xcb_client_message_event_t finished = *fHeld;
    fHeld.reset();
    const xcb_window_t source = finished.data.data32[0];
    finished.type = fAtoms[kFinished];
    finished.data = {};
    finished.data.data32[0] = finished.window;
    finished.window = source;
    Send(source, finished);
}

void XDragWatch::Send(xcb_window_t window, const xcb_client_message_event_t& message)
{
    // The window may be gone: the toolkit would report the error.
    const xcb_void_cookie_t cookie =
        xcb_send_event_checked(fServer, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
    xcb_discard_reply(fServer, cookie.sequence);
    xcb_flush(fServer);
}

} // namespace kits
