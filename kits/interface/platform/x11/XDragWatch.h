// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/x11/XSelections.h"

#include <QAbstractNativeEventFilter>

#include <xcb/xcb.h>

#include <functional>
#include <optional>

namespace kits {

class ForeignOffer;

/// Reads the messages of other programs' drags before the toolkit does. It learns from them how to ask for the data,
/// and it delays drops: the toolkit answers a drop as soon as it has delivered it, and after that the source gives no
/// data. So it keeps a drop whose data have not arrived from the toolkit, and sends it to the window again when they
/// have arrived or the time is over. It holds one drop; if another drag begins meanwhile, it refuses the held one.
///
/// Main thread. Needs an X server.
class XDragWatch : public QAbstractNativeEventFilter {
public:
    /// @param offer  returns the offer that is over our windows, or null
    explicit XDragWatch(std::function<ForeignOffer*()> offer);
    ~XDragWatch() override;

    const XSelections::Drag& Current() const { return fDrag; }

    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;

private:
    enum Atom { kEnter, kPosition, kDrop, kLeave, kFinished };

    void TakeAtoms();
    bool Hold(const xcb_client_message_event_t& drop);
    void FetchForHeld();
    void Release();
    void RefuseHeld();
    void Send(xcb_window_t window, const xcb_client_message_event_t& message);

    xcb_connection_t* const fServer;
    const std::function<ForeignOffer*()> fOffer;
    std::vector<xcb_intern_atom_cookie_t> fAsked;
    std::vector<xcb_atom_t> fAtoms; ///< by Atom; empty until the first message comes
    XSelections::Drag fDrag;
    std::optional<xcb_client_message_event_t> fHeld;
    bool fIsReleasing = false;
    uint64 fHolds = 0;
};

} // namespace kits
