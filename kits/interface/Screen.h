// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"
#include "kits/support/Rect.h"

#include <vector>

class BMessage;
class BMessenger;
class BWindow;

/// The screen that a window is on. A light object made where it is needed and thrown away; with the interface lock
/// held.
class BScreen {
public:
    /// The main screen.
    BScreen();
    /// The screen that shows most of the window; the main screen when it is null.
    explicit BScreen(const BWindow* window);

    /// In logical pixels, right and bottom included. Screens beside each other share one plane.
    BRect Frame() const;

    /// The colour of the empty desktop: that of the X server's root window, or what the desktop environment is set to.
    /// Over a picture, the picture's average. Kept in memory and refreshed when the desktop tells of a change: asking
    /// never waits. The first call in a process starts that, so it gives (51, 102, 152), as it does for good where
    /// the desktop can't be asked.
    rgb_color DesktopColor() const;
    /// Has the desktop looked at anew and returns at once. Within 100 ms the target gets the message, with the colour
    /// that the desktop shows now as "RGBColor" (B_RGB_COLOR_TYPE); with DesktopColor() if the desktop takes longer.
    /// Main thread.
    void AskDesktopColor(const BMessage& message, const BMessenger& target);
    /// Has the desktop painted in this colour, in place of a picture too; returns at once. DesktopColor() gives it from
    /// here on, also where the desktop can't be painted. Before the first time everything that changes is kept, on the
    /// disk too: RestoreDesktop() puts it back. While another program of the user has painted, nothing is.
    /// @param permanent  whether the settings of a desktop environment may be changed, which outlive the session
    void SetDesktopColor(rgb_color color, bool permanent = true);
    /// Restores the desktop as it was before the first SetDesktopColor(), with its picture and all its settings, but
    /// for what others have set meanwhile; returns at once. At the start of a program: restores what a program that
    /// was killed had painted, and costs nothing if there is none.
    void RestoreDesktop();

    /// Returns at once: what is drawn in one turn of the event loop reaches the screen together at its end, so the main
    /// thread never sleeps for the screen.
    status_t WaitForRetrace() const { return B_OK; }

private:
    BRect fFrame;
};

namespace kits {

/// All screens, the main one first, as BScreen::Frame() gives them; the last known ones while none is connected. The
/// application is sent B_SCREEN_CHANGED when they change. With the interface lock held.
/// @param withoutPanels  only what panels leave free of each
std::vector<BRect> ScreenFrames(bool withoutPanels = false);

} // namespace kits
