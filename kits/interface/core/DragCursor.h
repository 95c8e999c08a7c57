// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/core/DragCourse.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <map>

namespace kits {

/// While it exists, the pointer tells over the desktop that the desktop takes what is dragged, as a copy or as a move.
/// Otherwise the toolkit would show there what the desktop's own program makes of the drag, which is never offered the
/// drop: on most desktops that nothing can be dropped.
///
/// Main thread. Does nothing without an X server, and for what the desktop does not take.
class DragCursor : public QObject, public QAbstractNativeEventFilter {
public:
    /// @param isMove  a drop on the desktop moves what is dragged
    DragCursor(DragCourse::Taker taker, bool isMove);
    ~DragCursor() override;

    /// The pointer is at this place of the screen. The server is asked once for many moves.
    void Moved(BPoint where);

    /// Turns the answers of the windows that draw the desktop into those of the desktop.
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    void Look();
    /// Whether this window draws the desktop or lies on it, so that its answer counts for nothing.
    bool IsOfDesktop(uint32_t window);

    DragCourse::Taker fTaker;
    bool fIsMove;          ///< else it is a copy
    bool fIsTaken = false; ///< by the desktop, where the pointer is
    BPoint fWhere;
    QTimer fLook;
    std::map<uint32_t, bool> fIsOfDesktop; ///< the windows that have answered
    uint32_t fStatus = 0;                  ///< the atoms of an answer and of its action; 0: none
    uint32_t fAction = 0;
};

} // namespace kits
