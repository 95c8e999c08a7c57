// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Window.h"
#include "src/desktop/Placement.h"

#include <memory>
#include <string>

class DesktopApp;

/// One view on the desktop: a window without a frame, below all others, on all workspaces, as large as its view. It
/// remembers where the user put it, for each arrangement of screens, and is shown within reach on any screens.
///
/// It handles the messages that the view forwards: B_DROPPED_ON_DESKTOP and MSG_MOVE_REPLICANT move it,
/// MSG_REMOVE_REPLICANT and B_REPLICANT_TAKEN take it off the desktop, MSG_NEXT_REPLICANT passes the keyboard focus on.
/// It has the focus only from its activation until it loses it.
class ReplicantWindow : public BWindow {
public:
    /// @param owner     is notified when it must be removed, and when it has changed; outlives it
    /// @param frame     its first frame
    /// @param places    the user's places for it
    /// @param identity  by which another program recognises what it has taken
    ReplicantWindow(DesktopApp* owner, BRect frame, std::unique_ptr<BView> view, Places places, std::string identity);

    const std::string& Identity() const { return fIdentity; }

    /// Saves it as "Archive" (the view's), "Identity" and the fields of the places.
    void SaveTo(BMessage* into) const;

    /// Moves it to the user's place on these screens, or within reach.
    void Arrange();

    void FrameMoved(BPoint origin) override;
    void FrameResized(float width, float height) override;
    void WindowActivated(bool active) override;
    void MessageReceived(BMessage* message) override;

private:
    void Apply(BRect frame);
    void MoveByUser(BPoint leftTop);
    void Wish();
    bool IsSettled() const;

    DesktopApp* fOwner;
    BView* fView; // a child
    Places fPlaces;
    const std::string fIdentity;
    BRect fApplied;           // where this object last put it
    bigtime_t fAppliedAt = 0; // the time of that
};
