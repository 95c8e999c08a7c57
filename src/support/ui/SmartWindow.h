// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Window.h"

/// A window that is remembered: when it is closed it sends its own archive to its owner, so that the owner can rebuild
/// it in the same place. It clears its owner's pointer when it is destroyed, so that this never dangles.
///
/// The owner keeps a `SmartWindow*` and passes the address of that pointer as the *owner slot*; it recognises the
/// window in `MSG_WINDOW_CLOSED` by comparing the field "Container" with that address. (A slot is a `SmartWindow**`
/// even if the window is of a derived class: what the destructor writes through it must have the slot's type.)
///
/// `MSG_WINDOW_CLOSED` carries "Window" (pointer, only for comparison: the window is gone soon after), "Name" (string,
/// the handler's name), "Container" (pointer, the owner slot) and "Archive" (message).
///
/// All of it runs under the interface lock, as for every window.
class SmartWindow : public BWindow {
public:
    /// A titled window with asynchronous controls on the current workspace.
    /// @param target     gets `MSG_WINDOW_CLOSED`; null for the application. Not owned; outlives the window
    /// @param ownerSlot  the owner's pointer to this window, or null. Not owned; outlives the window
    /// @param flags      any bit but the lowest makes the closing window archive itself with its children
    SmartWindow(BRect frame, const char* title, BHandler* target, SmartWindow** ownerSlot, uint32 flags);

    /// A window from its archive; the flags come from "sw:flags", 0 if that is absent.
    /// @param title  in the language of this session; the archived one may be in another
    SmartWindow(BMessage* archive, const char* title, BHandler* target, SmartWindow** ownerSlot);

    /// Stores null through the owner slot.
    ~SmartWindow() override;

    /// Stores null through the owner slot at once, even if the window itself can only be destroyed later.
    void Quit() override;

    /// Writes what `BWindow::Archive` writes, then "class" and "sw:flags" (int32), without the workspaces: a rebuilt
    /// window opens on the workspace that is current then.
    /// @return the error of the step that failed
    status_t Archive(BMessage* into, bool deep = true) const override;

    /// Sends the archive to the target's looper, or to the application if there is no target. A target without a looper
    /// gets nothing.
    /// @return always true
    bool QuitRequested() override;
    void FrameMoved(BPoint origin) override;
    void FrameResized(float width, float height) override;

private:
    void ForgetOwner();

    BHandler* fTarget;
    SmartWindow** fOwnerSlot;
    uint32 fFlags = 0;
};
