#pragma once

#include "kits/interface/InterfaceDefs.h"
#include "kits/support/Rect.h"

class BWindow;

/// The screen that a window is on. A light object made where it is needed and thrown away; with the interface lock
/// held.
class BScreen {
public:
    /// The main screen.
    BScreen();
    /// The screen that shows most of the window; the main screen when it is null.
    explicit BScreen(const BWindow* window);

    /// False while no screen is connected; then the last known values are given.
    bool IsValid() const;

    /// In logical pixels, right and bottom included. Screens beside each other share one plane.
    BRect Frame() const;

    /// The colour of the empty desktop. Kept in memory: never asks another process. (51, 102, 152) while it is not
    /// known.
    rgb_color DesktopColor() const;
    /// From here on that is what DesktopColor() gives, in this process.
    /// @param permanent  whether it is kept beyond the session
    void SetDesktopColor(rgb_color color, bool permanent = true);

    /// Returns at once: what is drawn in one turn of the event loop reaches the screen together at its end, so the main
    /// thread never sleeps for the screen.
    status_t WaitForRetrace() const { return B_OK; }

private:
    BRect fFrame;
    bool fValid;
};
