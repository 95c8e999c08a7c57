// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/AppDefs.h"

#include <functional>

namespace kits {

/// The main thread is the one with which the process started: it runs the event loop, dispatches every looper's
/// messages, and is the only one that touches the toolkit's objects.

bool IsMainThread();
thread_id MainThreadId();

/// Runs the action on the main thread, with the interface lock held, at the next turn of its event loop or of a nested
/// one; in the order of the calls. Any thread, never waits. Objects may be gone by then: let the action look up a
/// token, not keep a pointer.
void RunOnMainThread(std::function<void()> action);

/// For code that destroys a view, a window or the application: runs the action on the main thread when no nested loop
/// is on its stack and no message is being dispatched. Nested loops are cancelled (NestedLoop). Always later, never
/// inside this call; in the order of the calls. Any thread, never waits.
void RunAtOutermostLoop(std::function<void()> action);

/// True if no nested loop runs and no message is being dispatched, so objects can be destroyed at once. Main
/// thread.
bool IsOutermost();

/// Stands on the stack of the main thread while a nested loop runs there: a menu, an alert, a drag, a wait for an
/// answer. Main thread.
class NestedLoop {
public:
    /// @param cancel  makes the loop end soon (closes the menu or the alert, cancels the drag); called at most once, on
    ///                the main thread, inside the innermost loop, which may be another one
    explicit NestedLoop(std::function<void()> cancel);
    /// Restores the depth of the interface lock from the beginning.
    ~NestedLoop();
    NestedLoop(const NestedLoop&) = delete;
    NestedLoop& operator=(const NestedLoop&) = delete;

    /// True if the loop was cancelled: then a question to the user counts as not answered.
    bool WasCanceled() const { return fCanceled; }

    /// How many run. For tests.
    static int32 Count();
    /// Cancels all of them, the innermost first.
    static void CancelAll();

private:
    std::function<void()> fCancel;
    NestedLoop* fOuter;
    int32 fLockDepth;
    bool fCanceled = false;
};

} // namespace kits
