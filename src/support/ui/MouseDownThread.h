// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Messenger.h"
#include "src/sampling/ThreadMagic.h"

class BPoint;
class BView;

/// Follows the mouse after a click in a view: a thread that looks at the mouse at regular intervals and calls the
/// view's functions, until all buttons are up or a function ends it.
///
/// It refers to the view and its window by token. So both may be destroyed at any time: the tracking then ends without
/// a further call. The same applies to a view that is removed from its window. The object deletes itself.
class MouseDownThread : public ThreadPrimitive {
public:
    /// Called at each look, with the mouse's place in the view's coordinates and the pressed buttons (never 0).
    /// @return false ends the tracking without a call of the release function
    typedef bool (*MovedFunction)(BView* view, BPoint& where, uint32 buttons);

    /// Called when all buttons are up; the last call of a tracking.
    typedef void (*ReleasedFunction)(BView* view, BPoint& where);

    /// @param view      in a window, which is locked
    /// @param moved     may be null: then nothing is called until the release
    /// @param released  may be null
    /// @param interval  microseconds between two looks
    MouseDownThread(BView* view, MovedFunction moved, ReleasedFunction released, bigtime_t interval);

    /// Starts to track and returns at once: for a view's MouseDown(). Both functions are called on the tracking thread
    /// with the view's window locked. If no thread can be spawned, neither is called.
    static void TrackMouse(BView* view, MovedFunction moved, ReleasedFunction released, bigtime_t interval);

    /// Looks at the mouse over a view once, with its window locked. Calls `moved` if a button is down, otherwise
    /// `released`.
    /// @return true if a button is down, `moved` agrees and the view exists
    static bool Look(const BMessenger& target, MovedFunction moved, ReleasedFunction released);

protected:
    ~MouseDownThread() override;
    void Run() override;

private:
    bigtime_t fInterval;
    BMessenger fView;
    ReleasedFunction fReleased;
    MovedFunction fMoved;
};
