// SPDX-License-Identifier: MIT
#include "kits/interface/Screen.h"
#include "kits/kernel/Clock.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartView.h"
#include "src/sampling/SysinfoNode.h"

// Draws a chart on the screen: the changes of a sample, and the areas that a window wants drawn.

void ChartView::Refresh(Sysinfo* sampler, SysinfoNode* newest)
{
    if (fSettings.lockBgColor) {
        const rgb_color desktop = BScreen(Window()).DesktopColor();
        if (desktop != fPicture.LowColor())
            MySetLowColor(desktop);
    }
    if (Window() == nullptr || fPaused)
        return;
    if (!fThrottle.Passes(system_time()) || !fRefreshes.Step(fSettings.skip))
        return;

    LooperLock lock(this);
    if (!lock)
        return;
    BScreen(Window()).WaitForRetrace();
    if (fSettings.mode == kChartMode)
        RefreshChart(sampler, newest);
    else
        RefreshGauge(sampler, newest);
    DrawFocus();
    if (fHovered)
        UpdateToolTip();
}

// Asks each source once per sample, since asking advances its smoothing.
ChartPicture::Shares ChartView::SharesOf(Sysinfo* sampler, SysinfoNode* newest)
{
    ChartPicture::Shares shares{};
    for (size_t i = 0; i < fProviders.size(); i++)
        shares[i] = DrawableFraction(fProviders[i]->Value(sampler, newest));
    return shares;
}

void ChartView::RefreshChart(Sysinfo* sampler, SysinfoNode* newest)
{
    SetDrawingMode(B_OP_COPY);
    SetLowColor(fPicture.LowColor());
    const int32 count = CountValueProviders();
    if (count == 0 || fPicture.Bitmap() == nullptr)
        return;
    const bool moved = fPicture.AddColumn(newest->Time(), SharesOf(sampler, newest));
    const bool textChanged = TakeValueText(sampler, newest);
    if (moved) {
        RestoreUnder(fPicture.Area());
        for (ChartCaption* caption : {&fCaptions.Value(), &fCaptions.Title()})
            caption->drawn = kNothingDrawn;
        DrawCaption(fCaptions.Value(), false);
        DrawCaption(fCaptions.Title(), false);
        if (fSettings.showBorder)
            DrawBorder();
        return;
    }
    for (int32 i = 0; i < count; i++) {
        SetHighColor(ChartColor(i));
        StrokeLine(fPicture.StrokeAt(i).from, fPicture.StrokeAt(i).to);
    }
    const BPoint top = fPicture.StrokeAt(count - 1).to;
    // The border was switched on before the first sample.
    if (fSettings.showBorder && top.x < fPicture.Area().left)
        DrawBorder();
    const auto runsUnder = [top](const BRect& caption) {
        return caption.left <= top.x && top.x <= caption.right && top.y <= caption.bottom;
    };
    if (textChanged || runsUnder(fCaptions.Value().drawn))
        DrawCaption(fCaptions.Value(), true);
    if (runsUnder(fCaptions.Title().drawn))
        DrawCaption(fCaptions.Title(), true);
}

void ChartView::RefreshGauge(Sysinfo* sampler, SysinfoNode* newest)
{
    SetDrawingMode(B_OP_COPY);
    SetLowColor(fPicture.LowColor());
    if (CountValueProviders() == 0)
        return;
    fPicture.AddGauge(newest->Time(), SharesOf(sampler, newest));
    fPicture.DrawGauge(*this, fPicture.Area());
    TakeValueText(sampler, newest);
    if (fValueVP != nullptr)
        DrawCaption(fCaptions.Value(), false);
    DrawCaption(fCaptions.Title(), false);
}

// Updates the value caption's text from this sample when its turn has come; returns true if the text changed.
bool ChartView::TakeValueText(Sysinfo* sampler, SysinfoNode* newest)
{
    if (fValueVP == nullptr)
        return false;
    if (!fValueRefreshes.Step(fSettings.valueSkip)) {
        // Smoothing has to see every sample.
        if (fValueVP->Flags() & VP_EXP_AVERAGE)
            fValueVP->Value(sampler, newest);
        return false;
    }
    ChartCaptions::Text text = "";
    fValueVP->GetValueString(text, sampler, newest);
    return fCaptions.SetValueText(text);
}

void ChartView::Draw(BRect update)
{
    LooperLock lock(this);
    if (!lock)
        return;
    update = update & Bounds();
    if (!update.IsValid())
        return;
    if (!IsFocus())
        fCaptions.Choose(nullptr);
    SetDrawingMode(B_OP_COPY);
    RestoreUnder(update);
    for (ChartCaption* caption : {&fCaptions.Value(), &fCaptions.Title()}) {
        if (!caption->look.shown || !caption->drawn.Intersects(update))
            continue;
        caption->drawn = kNothingDrawn;
        DrawCaption(*caption, false);
    }
    if (fSettings.showBorder)
        DrawBorder();
    DrawFocus();
}

// Draw the focus frame only when focus came from the keyboard.
void ChartView::DrawFocus()
{
    if (!IsFocus())
        fFocusByMouse = false;
    else if (!fFocusByMouse) {
        SetHighColor(ui_color(B_KEYBOARD_NAVIGATION_COLOR));
        StrokeRect(Bounds());
    }
}

// Draws the chart or gauge itself, without captions and border.
void ChartView::RestoreUnder(BRect area)
{
    if (fSettings.mode == kGaugeMode) {
        fPicture.DrawGauge(*this, area);
        return;
    }
    PictureLock lock(fPicture.Bitmap());
    if (lock)
        DrawBitmap(fPicture.Bitmap(), area, area);
}

void ChartView::DrawBorder()
{
    LooperLock lock(this);
    if (!lock)
        return;
    SetHighColor(fSettings.borderColor);
    StrokeRect(Bounds());
}

void ChartView::RedrawAll()
{
    DrawCaption(fCaptions.Value(), true);
    DrawCaption(fCaptions.Title(), true);
    Draw(Bounds());
}

void ChartView::DrawCaption(ChartCaption& caption, bool restore)
{
    LooperLock lock(this);
    if (!lock)
        return;
    BRect touched = kNothingDrawn;
    if (restore && caption.drawn.IsValid()) {
        // Rotated text reaches out of its rectangle.
        touched = caption.look.font.Rotation() == 0 ? caption.drawn : Bounds();
        RestoreUnder(touched);
        if (fSettings.showBorder && !fPicture.Area().Contains(touched))
            DrawBorder();
    }
    fCaptions.Draw(*this, caption, touched);
}
