// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"
#include "kits/support/Rect.h"

#include <vector>

class BMessage;
class BMessenger;
class BWindow;

/// The screen of a window. A light object: create it where it is needed and drop it afterwards, with the interface lock
/// held.
class BScreen {
public:
    /// The main screen.
    BScreen();
    /// The screen that shows most of the window; the main screen if it is null.
    explicit BScreen(const BWindow* window);

    /// In logical pixels, right and bottom included. Adjacent screens share one plane.
    BRect Frame() const { return fFrame; }

    /// The colour of the empty desktop: that of the X server's root window, or the desktop environment's setting. Over
    /// a picture, the picture's average. Kept in memory and refreshed when the desktop reports a change, so this never
    /// waits. The first call in a process starts that, and returns (51, 102, 152), as all calls do if the desktop's
    /// colour cannot be read.
    rgb_color DesktopColor() const;
    /// Reads the desktop again; returns at once. Within 100 ms the target gets the message, with the colour that the
    /// desktop shows now as "RGBColor" (B_RGB_COLOR_TYPE), or with DesktopColor() if the desktop takes longer. Main
    /// thread.
    void AskDesktopColor(const BMessage& message, const BMessenger& target);
    /// Paints the desktop in this colour, even over a picture; returns at once. DesktopColor() returns it from now on,
    /// even if the desktop cannot be painted. Before the first time, everything that will change is saved, on the disk
    /// too: RestoreDesktop() restores it. Does nothing while another program of the user has painted the desktop.
    /// @param permanent  whether the settings of a desktop environment, which outlive the session, may be changed
    void SetDesktopColor(rgb_color color, bool permanent = true);
    /// Restores the desktop as it was before the first SetDesktopColor(), with its picture and all its settings, except
    /// settings that others have changed meanwhile; returns at once. At the start of a program: undoes the painting of
    /// a program that was killed, and costs nothing if there was none.
    void RestoreDesktop();

    /// Returns at once: drawing of one turn of the event loop reaches the screen together at its end, so the main
    /// thread never sleeps for the screen.
    status_t WaitForRetrace() const { return B_OK; }

private:
    BRect fFrame;
};

namespace kits {

/// All screens, the main one first, as BScreen::Frame() returns them; the last known ones while none is connected. The
/// application gets B_SCREEN_CHANGED when they change. Call it with the interface lock held.
/// @param withoutPanels  return only the parts that panels leave free
std::vector<BRect> ScreenFrames(bool withoutPanels = false);

} // namespace kits
