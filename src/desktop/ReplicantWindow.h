// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Window.h"
#include "src/desktop/Placement.h"

#include <memory>
#include <string>

class DesktopApp;

/// One view on the desktop: a window without a frame, below all others, on all workspaces, that is as large as its
/// view. It remembers where the user put it, for each arrangement of screens, and is shown in reach whatever screens
/// there are.
///
/// It takes what the view forwards to it: B_DROPPED_ON_DESKTOP and MSG_MOVE_REPLICANT move it, MSG_REMOVE_REPLICANT and
/// B_REPLICANT_TAKEN take it off the desktop, MSG_NEXT_REPLICANT hands the keyboard on. It has the keyboard only from
/// when it is activated until it is given up.
class ReplicantWindow : public BWindow {
public:
    /// @param owner   is told when it is to go, and when it changed; outlives it
    /// @param frame   as it is shown first
    /// @param places  where the user wished it
    /// @param identity  by which another program knows what it has taken
    ReplicantWindow(DesktopApp* owner, BRect frame, std::unique_ptr<BView> view, Places places, std::string identity);

    const std::string& Identity() const { return fIdentity; }

    /// As "Archive" (the view's), "Identity" and what the places save.
    void SaveTo(BMessage* into) const;

    /// Goes where the user wished it on these screens, or into reach.
    void Arrange();

    void FrameMoved(BPoint origin) override;
    void FrameResized(float width, float height) override;
    void WindowActivated(bool active) override;
    void MessageReceived(BMessage* message) override;

private:
    void Apply(BRect frame);
    void Wish();
    bool IsSettled() const;

    DesktopApp* fOwner;
    BView* fView; // a child
    Places fPlaces;
    const std::string fIdentity;
    BRect fApplied;           // where this object last put it
    bigtime_t fAppliedAt = 0; // and when
};
