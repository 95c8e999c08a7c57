// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/interface/AccessiblePart.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Window.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartMenu.h"
#include "src/chart/ChartTip.h"
#include "src/chart/ChartView.h"
#include "src/support/FixedPoint.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"
#include "src/support/ui/MouseDownThread.h"

#include <algorithm>
#include <cmath>

// The mouse on a chart: its menu, and the dragging of its captions.

namespace {

constexpr bigtime_t kTrackInterval = 50000;
constexpr bigtime_t kResizeInterval = 10000;
constexpr float kCornerRadius = 6;

bool CV_TrackValue(BView* view, BPoint& where, uint32)
{
    static_cast<ChartView*>(view)->TrackValue(where);
    return true;
}

bool CV_TrackTitle(BView* view, BPoint& where, uint32)
{
    static_cast<ChartView*>(view)->TrackTitle(where);
    return true;
}

void CV_DoneTracking(BView* view, BPoint&)
{
    static_cast<ChartView*>(view)->DoneTracking();
}

bool CV_FollowCorner(BView* view, BPoint& where, uint32)
{
    static_cast<ChartView*>(view)->FollowCorner(where);
    return true;
}

/// The view may be deleted at any time, so this reaches it by its messenger only.
void CV_Resizer(BMessenger chart)
{
    while (MouseDownThread::Look(chart, CV_FollowCorner, nullptr))
        snooze(kResizeInterval);
}

bool IsOnCorner(BRect bounds, BPoint where)
{
    return std::hypot(where.x - bounds.right, where.y - bounds.bottom) < kCornerRadius;
}

} // namespace

void ChartView::FollowCorner(BPoint where)
{
    ResizeTo(std::max(where.x, kSmallestReplicant), std::max(where.y, kSmallestReplicant));
}

void ChartView::MouseDown(BPoint where)
{
    const BMessage* message = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const auto buttons = static_cast<uint32>(message != nullptr ? kits::kButtonsField.Get(*message) : 0);
    fFocusByMouse = true;
    if (fCaptions.Choose(nullptr))
        Invalidate();
    if ((buttons & B_PRIMARY_MOUSE_BUTTON) == 0)
        OpenMenu(where);
    else if (fCaptions.Value().IsOn(where))
        MouseDownThread::TrackMouse(this, CV_TrackValue, CV_DoneTracking, kTrackInterval);
    else if (fCaptions.Title().IsOn(where))
        MouseDownThread::TrackMouse(this, CV_TrackTitle, CV_DoneTracking, kTrackInterval);
    else if (IsReplicant() && IsOnCorner(Bounds(), where))
        fResizer = FireAndForgetThread::Launch(
            std::make_unique<OneParamFunctionObject<BMessenger>>(CV_Resizer, BMessenger(this)), "Chart Resizer", 5);
}

void ChartView::MouseMoved(BPoint, uint32 transit, const BMessage*)
{
    fHovered = transit == B_ENTERED_VIEW || transit == B_INSIDE_VIEW;
    if (transit == B_ENTERED_VIEW)
        UpdateToolTip();
}

void ChartView::UpdateToolTip()
{
    ChartTip tip;
    int32 source = 0;
    for (const AccessiblePart& part : AccessibleParts())
        tip.AddSource(ChartColor(source++), part.name, part.value);
    SetToolTip(tip.Text().c_str());
}

std::vector<AccessiblePart> ChartView::AccessibleParts() const
{
    std::vector<AccessiblePart> parts;
    for (size_t i = 0; i < fProviders.size(); i++) {
        const ValueProvider& provider = *fProviders[i];
        const double share = fPicture.NewestShares()[i];
        parts.push_back({SourceName(provider.Target(), provider.Flags()), FixedPoint(share * 100, 1) + " %", share});
    }
    return parts;
}

void ChartView::ContextMenuRequested(BPoint where)
{
    const ChartCaption* chosen = fCaptions.Chosen();
    OpenMenu(chosen != nullptr ? fCaptions.PlaceOn(*chosen) : where);
}

void ChartView::OpenMenu(BPoint where)
{
    if (fMenu == nullptr)
        return;
    if (fOwner != nullptr) {
        fMenu->Offer(MSG_DISTRIBUTE_VALUE_POS, Tr("Distribute position"), fCaptions.Value().IsOn(where));
        fMenu->Offer(MSG_DISTRIBUTE_TITLE_POS, Tr("Distribute pos."), fCaptions.Title().IsOn(where));
    }
    fMenu->Open(ConvertToScreen(where), this);
}

void ChartView::TrackCaption(ChartCaption& caption, BPoint where)
{
    LooperLock lock(this);
    if (fCaptions.MoveTo(caption, where, Bounds()))
        DrawCaption(caption, true);
}

void ChartView::DoneTracking()
{
    LooperLock lock(this);
    if (!lock)
        return;
    DrawCaption(fCaptions.Value(), true);
    DrawCaption(fCaptions.Title(), true);
    if (fSettings.showBorder)
        DrawBorder();
}
