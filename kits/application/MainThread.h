// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"

#include <functional>

namespace kits {

/// The main thread is the one that the process started with: it runs the event loop, dispatches every looper's messages
/// and alone touches the toolkit's objects.

bool IsMainThread();
thread_id MainThreadId();

/// Has the action run on the main thread with the interface lock held, at the next turn of its event loop, also of a
/// nested one; in the order of the calls. Any thread, never waits. What the action refers to has to be there then:
/// let it look a token up, not keep a pointer.
void RunOnMainThread(std::function<void()> action);

/// For whatever destroys a view, a window or the application: has the action run on the main thread when no nested loop
/// is on its stack and no message is being dispatched. If there are nested loops they are told to end (NestedLoop).
/// Always later, never inside this call. Any thread, never waits. In the order of the calls.
void RunAtOutermostLoop(std::function<void()> action);

/// Whether nothing stands between the code that runs now and the outermost loop: no nested loop, no message in
/// dispatch. Then things can be destroyed at once. Main thread.
bool IsOutermost();

/// Stands on the stack of the main thread for as long as a nested loop runs there: a menu, an alert, a drag, a wait for
/// an answer. Main thread.
class NestedLoop {
public:
    /// @param cancel  makes the loop end soon (closes the menu or the alert, cancels the drag); called at most once, on
    ///                the main thread, inside the innermost loop, where this one may not be the innermost
    explicit NestedLoop(std::function<void()> cancel);
    /// Puts the depth of the interface lock back to what it was at the beginning.
    ~NestedLoop();
    NestedLoop(const NestedLoop&) = delete;
    NestedLoop& operator=(const NestedLoop&) = delete;

    /// Whether the loop was told to end: what was asked of the user then counts as not answered.
    bool WasCanceled() const { return fCanceled; }

    static int32 Count();
    /// Tells all of them to end, the innermost first.
    static void CancelAll();

private:
    std::function<void()> fCancel;
    NestedLoop* fOuter;
    int32 fLockDepth;
    bool fCanceled = false;
};

} // namespace kits
