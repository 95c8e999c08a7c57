// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/core/DragCourse.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <map>

namespace kits {

/// While it exists, the pointer over the desktop shows that the desktop takes the drag, as a copy or as a move.
/// Otherwise the toolkit would show there the answer of the desktop's own program, which is never offered the drop: on
/// most desktops, that nothing can be dropped.
///
/// Main thread. Does nothing without an X server, or for drags that the desktop does not take.
class DragCursor : public QObject, public QAbstractNativeEventFilter {
public:
    /// @param isMove  a drop on the desktop moves the dragged view
    DragCursor(DragCourse::Taker taker, bool isMove);

    /// The pointer is at this place of the screen. The server is asked once for many moves.
    void Moved(BPoint where);

    /// Replaces the answers of windows that draw the desktop by those of the desktop.
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    void Look();
    /// Returns whether this window draws the desktop or lies on it, so that its answer is ignored.
    bool IsOfDesktop(uint32_t window);

    DragCourse::Taker fTaker;
    bool fIsMove;          ///< otherwise it is a copy
    bool fIsTaken = false; ///< by the desktop, at the pointer's place
    BPoint fWhere;
    QTimer fLook;
    std::map<uint32_t, bool> fIsOfDesktop; ///< windows that have answered
    uint32_t fStatus = 0;                  ///< the atoms of an answer and of its action; 0: none
    uint32_t fAction = 0;
};

} // namespace kits
