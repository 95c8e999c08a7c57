// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/x11/DesktopLayer.h"
#include "kits/support/Point.h"

#include <optional>

namespace kits {

/// The course of one drag out of this process: decides from the events on the way how it ended. Queries nothing, so
/// that every order of events can be tested.
///
/// The toolkit cannot be asked: it reports the same for a drop on the root window, for Escape and for a drag that did
/// not move; and some desktops accept any drop and make a note or a file of it. So a drag for the desktop itself ends
/// when the button is released over the desktop, before any program is offered the drop.
class DragCourse {
public:
    /// Whether the desktop itself takes the drag, instead of a program that draws it.
    enum class Taker {
        kPrograms,    ///< no: the drag is for programs, as text is
        kBareDesktop, ///< where nothing lies on it: charts there take a colour themselves
        kDesktop      ///< everywhere, on charts too: an archive becomes a chart
    };

    /// Returns whether the desktop takes a drop there.
    static bool IsTaken(Taker taker, DesktopLayer::Ground ground);

    explicit DragCourse(Taker taker)
        : fTaker(taker)
    {
    }

    bool IsForDesktop() const { return fTaker != Taker::kPrograms; }

    /// Escape was pressed, or the program ended the drag. Has no effect after the release.
    void GiveUp() { fIsOver = true; }

    /// A button was released; the first release ends the drag.
    /// @param where   on the screen
    /// @param ground  the topmost thing at that place
    /// @return true if this is a drop on the desktop: the caller cancels the toolkit's drag before the toolkit sees the
    ///         release
    bool Release(BPoint where, DesktopLayer::Ground ground);

    /// The place of the drop on the desktop, on the screen. Empty if the drag ended otherwise.
    std::optional<BPoint> DropOnDesktop() const { return fDropOnDesktop; }

private:
    Taker fTaker;
    bool fIsOver = false;
    std::optional<BPoint> fDropOnDesktop;
};

} // namespace kits
