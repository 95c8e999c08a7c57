// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/interface/View.h"
#include "kits/interface/Window.h"

#include <functional>
#include <memory>
#include <vector>

/// Help for tests of windows and views. Link `test_gui_main`: its main() sets the interface kit up on a screen without
/// a display, unless QT_QPA_PLATFORM names another. Everything in the main thread.
namespace test {

/// Lets the event loop run until nothing waits: messages, drawing, painting. Doesn't wait for timers.
void Turn();
/// Runs the event loop until the condition holds. False when it did not within a minute.
bool WaitFor(const std::function<bool()>& condition);

/// Shows a window and lets the loop run until it can be seen (or is minimised) and, if it is new, has the focus.
void Show(BWindow* window);

/// What a window's view shows at a place: the word of its picture, the view colour where it has none, 0 where it is
/// transparent.
uint32 PixelOf(const BView* view, int32 x, int32 y);
/// The words of its whole picture, row by row.
std::vector<uint32> PixelsOf(const BView* view);
/// What the window shows at a place of its content, all views together.
uint32 PixelOf(BWindow* window, int32 x, int32 y);

// Input, as if the system sent it to the window that the view is in. Points are in the view's coordinates.

/// Presses the buttons (B_*_MOUSE_BUTTON); they stay down until Release.
void Press(BView* view, BPoint where, uint32 buttons = B_PRIMARY_MOUSE_BUTTON);
/// Moves the pointer with what is down.
void MoveTo(BView* view, BPoint where);
void Release(BView* view, BPoint where);
void Click(BView* view, BPoint where, uint32 buttons = B_PRIMARY_MOUSE_BUTTON);
/// A key of the view that has the focus; B_* keys or one character, with the keys of `modifiers` (B_*_KEY) held.
void Key(BWindow* window, char key, uint32 modifiers = 0);

/// What was dragged.
struct Dragged {
    BMessage message;
    BRect rect; ///< the outline on the screen; not valid when a picture was dragged
    BPoint offset;
};
/// From here on drags are noted instead of carried out.
void CatchDrags();
/// The last one since the last call; null when there was none.
std::unique_ptr<Dragged> TakeDrag();
/// Drops the message on the view, as a drag of our own would.
void Drop(BView* view, const BMessage& message, BPoint where);

} // namespace test
