// SPDX-License-Identifier: MIT
#include "src/desktop/ReplicantWindow.h"

#include "kits/application/Message.h"
#include "kits/interface/Dragger.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Screen.h"
#include "kits/interface/View.h"
#include "kits/kernel/Clock.h"
#include "src/desktop/DesktopApp.h"
#include "src/support/MessageCodes.h"
#include "src/support/MessageFields.h"
#include "src/support/Tr.h"

namespace {

/// Window managers move windows when screens come and go, and when they first manage them.
constexpr bigtime_t kSettling = 5'000'000;
constexpr float kLargestSide = 16383;

} // namespace

ReplicantWindow::ReplicantWindow(DesktopApp* owner, BRect frame, std::unique_ptr<BView> view, Places places,
                                 std::string identity)
    : BWindow(frame, Tr("Qel chart"), B_NO_BORDER_WINDOW_LOOK, B_DESKTOP_WINDOW_FEEL, B_NOT_CLOSABLE | B_NOT_ZOOMABLE,
              B_ALL_WORKSPACES)
    , fOwner(owner)
    , fView(view.get())
    , fPlaces(std::move(places))
    , fIdentity(std::move(identity))
    , fApplied(frame)
    , fAppliedAt(system_time())
{
    SetSizeLimits(kLeastSide, kLargestSide, kLeastSide, kLargestSide);
    fView->SetResizingMode(B_FOLLOW_NONE);
    fView->MoveTo(0, 0);
    fView->ResizeTo(frame.Width(), frame.Height());
    AddChild(view.release());
    if (auto* const dragger = dynamic_cast<BDragger*>(FindView("_dragger_")))
        dragger->SetIdentity(fIdentity);
}

void ReplicantWindow::SaveTo(BMessage* into) const
{
    BMessage archive;
    if (fView->Archive(&archive, false) == B_OK)
        kArchiveField.Add(into, archive);
    kIdentityField.Add(into, fIdentity);
    fPlaces.SaveTo(into);
}

void ReplicantWindow::Apply(BRect frame)
{
    fApplied = frame;
    fAppliedAt = system_time();
    MoveTo(frame.LeftTop());
    ResizeTo(frame.Width(), frame.Height());
}

void ReplicantWindow::MoveByUser(BPoint leftTop)
{
    BRect frame = Frame();
    frame.OffsetTo(leftTop);
    Apply(InReach(frame, kits::ScreenFrames()));
    Wish();
}

void ReplicantWindow::Arrange()
{
    const std::vector<BRect> screens = kits::ScreenFrames();
    Apply(InReach(HeldToScreens(fPlaces.For(ArrangementOf(screens)), screens), screens));
}

void ReplicantWindow::Wish()
{
    fApplied = Frame();
    fPlaces.Wish(ArrangementOf(kits::ScreenFrames()), fApplied);
    fOwner->Changed();
}

bool ReplicantWindow::IsSettled() const
{
    return system_time() - fAppliedAt > kSettling;
}

void ReplicantWindow::FrameMoved(BPoint)
{
    // The user may have moved it with the window manager.
    if (Frame() != fApplied && IsSettled())
        Wish();
}

void ReplicantWindow::FrameResized(float width, float height)
{
    const BRect bounds = fView->Bounds();
    if (bounds.Width() != width || bounds.Height() != height) {
        fView->ResizeTo(width, height);
        if (Frame() != fApplied && IsSettled())
            Wish();
    } else if (Frame() != fApplied) {
        // The view resized first: the user dragged its corner.
        Wish();
    }
}

void ReplicantWindow::WindowActivated(bool active)
{
    if (active)
        fView->MakeFocus();
}

void ReplicantWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case B_DROPPED_ON_DESKTOP: {
        BPoint where;
        BPoint offset;
        if (kits::kWhereField.Find(*message, &where) && kits::kOffsetField.Find(*message, &offset))
            MoveByUser(where - offset);
        break;
    }
    case MSG_MOVE_REPLICANT:
        if (BPoint distance; kDistanceField.Find(*message, &distance))
            MoveByUser(Frame().LeftTop() + distance);
        break;
    case MSG_NEXT_REPLICANT:
        fOwner->ActivateNext(this, kBackField.Get(*message));
        break;
    case B_REPLICANT_TAKEN:
    case MSG_REMOVE_REPLICANT:
        fOwner->Remove(this);
        break;
    default:
        BWindow::MessageReceived(message);
    }
}
