// SPDX-License-Identifier: MIT
#include "kits/interface/core/FrameTracker.h"

#include <cstdlib>
#include <utility>

namespace kits {

namespace {

PixelRect WithSize(PixelRect rect, int32 width, int32 height)
{
    return {rect.left, rect.top, rect.left + width, rect.top + height};
}

PixelRect WithPlace(PixelRect rect, int32 left, int32 top)
{
    return {left, top, left + rect.Width(), top + rect.Height()};
}

bool SameSize(const PixelRect& a, const PixelRect& b, int32 slack = 0)
{
    return std::abs(a.Width() - b.Width()) <= slack && std::abs(a.Height() - b.Height()) <= slack;
}

} // namespace

PixelRect FrameTracker::Content() const
{
    const PixelRect& size = fPending && !fZoomed ? fFrame : fActual;
    const PixelRect place = fPlaceless ? PixelRect{} : fActual;
    return WithSize(place, size.Width(), size.Height());
}

PixelRect FrameTracker::Wanted() const
{
    return fElsewhere ? WithPlace(fFrame, fActual.left, fActual.top) : fFrame;
}

bool FrameTracker::Ask(const PixelRect& frame, bigtime_t now)
{
    // A window that only changes its size stays where it is visible.
    fElsewhere = fElsewhere && frame.left == fFrame.left && frame.top == fFrame.top;
    fFrame = frame;
    fSettled = frame;
    fChanged = now;
    if (fZoomed)
        return false;
    fRescaling = false;
    fPending = fPending || !SameSize(frame, fActual);
    // A tiling window manager may have changed its mind, so the window asks again.
    if (!fElsewhere)
        fActual = WithPlace(fActual, frame.left, frame.top);
    return true;
}

bool FrameTracker::HasWantedSize() const
{
    return SameSize(fActual, fFrame, fSlack);
}

void FrameTracker::Rescale(int32 left, int32 top, bigtime_t now)
{
    fRescaled = now;
    fElsewhere = true;
    fActual = WithPlace(fActual, left, top);
    if (fZoomed)
        return;
    // If the request is granted at once, nothing is reported: in logical pixels nothing has changed.
    fActual = WithSize(fActual, fFrame.Width(), fFrame.Height());
    fPending = true;
    fRescaling = true;
    fTiled = false;
}

void FrameTracker::HoldSize()
{
    if (fZoomed)
        return;
    fPending = true;
    fRescaling = true;
}

void FrameTracker::Release()
{
    fPending = false;
    fRescaling = false;
}

void FrameTracker::NoteUsers(const PixelRect& frame, bigtime_t now)
{
    if (now - fChanged > kGrace)
        fSettled = fFrame;
    fChanged = now;
    fFrame = frame;
}

bool FrameTracker::ReportSize(int32 width, int32 height, bigtime_t now)
{
    const PixelRect content = Content();
    const PixelRect frame = fFrame;
    fActual = WithSize(fActual, width, height);
    if (fPending) {
        // While the scale changes, older sizes are reported before and after the wanted one.
        if (!fRescaling && HasWantedSize()) {
            fPending = false;
            fTiled = false;
        }
    } else if (fTiled) {
        fTiled = !HasWantedSize();
    } else if (!fZoomed && !HasWantedSize()) {
        NoteUsers(WithSize(fFrame, width, height), now);
    }
    return content != Content() || frame != fFrame;
}

bool FrameTracker::ReportPlace(int32 left, int32 top, bigtime_t now)
{
    const PixelRect content = Content();
    const PixelRect frame = fFrame;
    const bool moved = fActual.left != left || fActual.top != top;
    fActual = WithPlace(fActual, left, top);
    if (fElsewhere && (!moved || IsZoomed() || now - fRescaled <= kScaleGrace))
        return content != Content();
    fElsewhere = false;
    if (!IsZoomed() && (fFrame.left != left || fFrame.top != top))
        NoteUsers(WithPlace(fFrame, left, top), now);
    return content != Content() || frame != fFrame;
}

bool FrameTracker::SetZoomed(bool zoomed, bigtime_t now)
{
    if (fZoomed == zoomed)
        return false;
    fZoomed = zoomed;
    fPending = false;
    if (zoomed) {
        // Some window managers report the large size before the state.
        if (now - fChanged <= kGrace)
            fFrame = fSettled;
        return false;
    }
    fTiled = false;
    fRescaling = false;
    fPending = !SameSize(fActual, fFrame);
    fSettled = fFrame;
    fChanged = now;
    return fPending;
}

void FrameTracker::Show()
{
    fPending = !fZoomed;
    fRescaling = false;
}

bool FrameTracker::GraceOver(int32 limitWidth, int32 limitHeight)
{
    if (!fPending)
        return false;
    const bool wasRescaling = std::exchange(fRescaling, false);
    fPending = false;
    if (HasWantedSize())
        return false;
    if (!wasRescaling && (fFrame.Width() > limitWidth || fFrame.Height() > limitHeight)) {
        // It asked for more than the screen has, and accepts what it got.
        fFrame = WithSize(fFrame, fActual.Width(), fActual.Height());
    } else {
        fTiled = true;
    }
    return true;
}

} // namespace kits
