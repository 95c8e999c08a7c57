// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/interface/AccessiblePart.h"
#include "kits/interface/Window.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartMenu.h"
#include "src/chart/ChartTip.h"
#include "src/chart/ChartView.h"
#include "src/sampling/SourceName.h"
#include "src/support/FixedPoint.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"
#include "src/support/ui/MouseDownThread.h"

#include <algorithm>
#include <cmath>

// The hand on a chart: its menu, and its captions while they are dragged.

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

/// The view may go at any time: reached by its messenger only.
class CornerFollower : public FunctionObject {
public:
    explicit CornerFollower(ChartView* chart)
        : fChart(chart)
    {
    }

    void operator()() override
    {
        while (Look())
            snooze(kResizeInterval);
    }

private:
    bool Look()
    {
        if (!fChart.LockTarget())
            return false;
        BLooper* looper = nullptr;
        auto* chart = dynamic_cast<ChartView*>(fChart.Target(&looper));
        const bool goesOn = chart != nullptr && chart->FollowCorner();
        looper->Unlock();
        return goesOn;
    }

    BMessenger fChart;
};

} // namespace

bool ChartView::IsOn(const ChartCaption& caption, BPoint where) const
{
    return caption.shown && caption.drawn.Contains(where);
}

bool ChartView::IsOnCorner(BPoint where) const
{
    const BPoint corner = Bounds().RightBottom();
    return std::hypot(where.x - corner.x, where.y - corner.y) < kCornerRadius;
}

void ChartView::TrackCorner()
{
    fResizer = FireAndForgetThread::Launch(std::make_unique<CornerFollower>(this), "Chart Resizer", 5);
}

bool ChartView::FollowCorner()
{
    BPoint where;
    uint32 buttons = 0;
    GetMouse(&where, &buttons, false);
    if (buttons == 0)
        return false;
    const float width = std::max(where.x, kSmallestReplicant);
    const float height = std::max(where.y, kSmallestReplicant);
    if (width != Bounds().Width() || height != Bounds().Height())
        ResizeTo(width, height);
    return true;
}

void ChartView::MouseDown(BPoint where)
{
    int32 buttons = 0;
    const BMessage* message = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    if (message != nullptr)
        message->FindInt32("buttons", &buttons);
    fFocusByMouse = true;
    Choose(nullptr);
    if ((static_cast<uint32>(buttons) & B_PRIMARY_MOUSE_BUTTON) == 0)
        OpenMenu(where);
    else if (IsOn(fValueCaption, where))
        MouseDownThread::TrackMouse(this, CV_TrackValue, CV_DoneTracking, kTrackInterval);
    else if (IsOn(fTitleCaption, where))
        MouseDownThread::TrackMouse(this, CV_TrackTitle, CV_DoneTracking, kTrackInterval);
    else if (fReplicant && IsOnCorner(where))
        TrackCorner();
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
        parts.push_back(
            {SourceName(provider.Target(), provider.Flags()), FixedPoint(fShares[i] * 100, 1) + " %", fShares[i]});
    }
    return parts;
}

void ChartView::ContextMenuRequested(BPoint where)
{
    const ChartCaption* chosen = Chosen();
    OpenMenu(chosen != nullptr ? PlaceOn(*chosen) : where);
}

void ChartView::OpenMenu(BPoint where)
{
    if (fMenu == nullptr)
        return;
    if (fOwner != nullptr) {
        fMenu->Offer(MSG_DISTRIBUTE_VALUE_POS, Tr("Distribute position"), IsOn(fValueCaption, where));
        fMenu->Offer(MSG_DISTRIBUTE_TITLE_POS, Tr("Distribute pos."), IsOn(fTitleCaption, where));
    }
    fMenu->Open(ConvertToScreen(where), this);
}

void ChartView::TrackValue(BPoint where)
{
    TrackCaption(fValueCaption, where);
}

void ChartView::TrackTitle(BPoint where)
{
    TrackCaption(fTitleCaption, where);
}

void ChartView::TrackCaption(ChartCaption& caption, BPoint where)
{
    LooperLock lock(this);
    const float width = caption.font.StringWidth(TextOf(caption));
    where = ModerateStringCoord(where, Bounds(), width, caption.height);
    if (where == caption.where)
        return;
    caption.where = where;
    DrawCaption(caption, true);
}

void ChartView::DoneTracking()
{
    LooperLock lock(this);
    if (!lock)
        return;
    DrawValue(true);
    DrawTitle(true);
    if (fShowBorder)
        DrawBorder();
}
