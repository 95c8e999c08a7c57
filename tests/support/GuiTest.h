// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/interface/View.h"
#include "kits/interface/Window.h"

#include <functional>
#include <memory>
#include <vector>

/// Helpers for tests of windows and views. Link `test_gui_main`: its main() sets the interface kit up without a
/// display, unless QT_QPA_PLATFORM names another platform. Call everything from the main thread.
namespace test {

/// Runs the event loop until nothing waits: messages, drawing, painting. Does not wait for timers.
void Turn();
/// Runs the event loop until the condition holds. Returns false if it does not within a minute.
bool WaitFor(const std::function<bool()>& condition);

/// Shows a window and runs the loop until it is visible (or minimised) and, if it is new, has the focus.
void Show(BWindow* window);

/// The pixel of a view's picture at this place, as a word: the view colour where nothing is drawn, 0 where the view is
/// transparent.
uint32 PixelOf(const BView* view, int32 x, int32 y);
/// All pixels of its picture, row by row.
std::vector<uint32> PixelsOf(const BView* view);
/// The pixel that the window shows at this place of its content, all views together.
uint32 PixelOf(BWindow* window, int32 x, int32 y);

// Input, as if the system sent it to the view's window. Points are in the view's coordinates.

/// Presses the buttons (B_*_MOUSE_BUTTON); they stay down until Release.
void Press(BView* view, BPoint where, uint32 buttons = B_PRIMARY_MOUSE_BUTTON);
/// Moves the pointer; pressed buttons stay down.
void MoveTo(BView* view, BPoint where);
void Release(BView* view, BPoint where);
void Click(BView* view, BPoint where, uint32 buttons = B_PRIMARY_MOUSE_BUTTON);
/// Presses and releases a key for the focused view; B_* keys or one character, with the keys of `modifiers` (B_*_KEY)
/// held.
void Key(BWindow* window, char key, uint32 modifiers = 0);

/// A drag that was caught.
struct Dragged {
    BMessage message;
    BRect rect; ///< the outline on the screen; not valid if a picture was dragged
    BPoint offset;
};
/// Catches drags from now on instead of carrying them out.
void CatchDrags();
/// Returns the last drag since the last call, or null.
std::unique_ptr<Dragged> TakeDrag();
/// Drops the message on the view, as a drag of our own would.
void Drop(BView* view, const BMessage& message, BPoint where);

} // namespace test
