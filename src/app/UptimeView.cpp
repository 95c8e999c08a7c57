// SPDX-License-Identifier: MIT
#include "src/app/UptimeView.h"

#include "kits/interface/Window.h"
#include "kits/kernel/Clock.h"
#include "src/app/QelApp.h"
#include "src/app/UptimeText.h"
#include "src/prefs/store/Preferences.h"

#include <ctime>

namespace {

constexpr bigtime_t kPulse = 1'000'000;

BRect BoundsOf(BRect frame)
{
    frame.OffsetTo(0, 0);
    return frame;
}

} // namespace

UptimeView::UptimeView(BRect frame)
    : BTextView(frame, "Uptime", BoundsOf(frame), B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_PULSE_NEEDED | B_FRAME_EVENTS)
{
    MakeEditable(false);
    MakeSelectable(false);
    SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    Refresh();
}

void UptimeView::AllAttached()
{
    Window()->SetPulseRate(kPulse);
    Refresh();
}

void UptimeView::Pulse()
{
    Refresh();
}

void UptimeView::FrameResized(float width, float height)
{
    SetTextRect(Bounds());
    BTextView::FrameResized(width, height);
}

void UptimeView::Refresh()
{
    auto* app = dynamic_cast<QelApp*>(be_app);
    if (app == nullptr || prefs_common == nullptr)
        return;
    const UptimeTotals totals = UptimeTotals::From(*prefs_common);
    UptimeFigures figures;
    figures.wallClock = std::time(nullptr);
    figures.uptime = system_time();
    figures.total = totals.sum + (figures.uptime - app->StartTime());
    figures.boots = totals.bootCount;
    app->UpdateUptimes();
    figures.table = app->Uptimes();
    SetText(UptimeText(figures).c_str());
}
