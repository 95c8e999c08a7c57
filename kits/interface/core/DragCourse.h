// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/x11/DesktopLayer.h"
#include "kits/support/Point.h"

#include <optional>

namespace kits {

/// The course of one drag out of this process: judges from what happens on the way how it ended. Asks nobody, so that
/// every order of events can be tried.
///
/// The toolkit cannot be asked: it reports the same for a drop on the root window, for Escape and for a drag that did
/// not move; and some desktops accept whatever is dropped on them and make a note or a file of it. So a drag that the
/// desktop itself is to take ends with the release over the desktop, before any program is offered the drop.
class DragCourse {
public:
    /// Whether the desktop takes what is dragged, instead of a program that draws it.
    enum class Taker {
        kPrograms,    ///< no: it is for programs, as text is
        kBareDesktop, ///< where nothing lies on it: charts there take a colour themselves
        kDesktop      ///< everywhere, on charts too: an archive becomes a chart
    };

    /// Whether the desktop takes a drop there.
    static bool IsTaken(Taker taker, DesktopLayer::Ground ground);

    explicit DragCourse(Taker taker);

    bool IsForDesktop() const { return fTaker != Taker::kPrograms; }

    /// Escape was pressed, or the program ended the drag. Too late after the release.
    void GiveUp();

    /// A button was released; the first release ends the drag.
    /// @param where   on the screen
    /// @param ground  what shows topmost at that place
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
