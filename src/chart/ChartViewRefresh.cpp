// SPDX-License-Identifier: MIT
#include "kits/interface/Screen.h"
#include "kits/kernel/Clock.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartView.h"
#include "src/chart/PixelRows.h"
#include "src/sampling/SysinfoNode.h"

#include <cmath>
#include <cstring>

// What a sample does to a chart.

void ChartView::Refresh(Sysinfo* sampler, SysinfoNode* newest)
{
    if (fLockBgColor) {
        const rgb_color desktop = BScreen(Window()).DesktopColor();
        if (desktop != fLowColor)
            MySetLowColor(desktop);
    }
    if (Window() == nullptr || fPaused)
        return;
    if (!fThrottle.Passes(system_time()) || !fRefreshSkip.Step())
        return;

    LooperLock lock(this);
    if (!lock)
        return;
    BScreen(Window()).WaitForRetrace();
    if (fMode == kChartMode)
        RefreshChart(sampler, newest);
    else
        RefreshGauge(sampler, newest);
    DrawFocus();
    if (fHovered)
        UpdateToolTip();
}

// Each source is asked once a sample: asking advances its smoothing.
double ChartView::NextShare(size_t source, Sysinfo* sampler, SysinfoNode* newest)
{
    const double share = DrawableFraction(fProviders[source]->Value(sampler, newest));
    fShares[source] = share;
    return share;
}

void ChartView::RefreshChart(Sysinfo* sampler, SysinfoNode* newest)
{
    SetDrawingMode(B_OP_COPY);
    SetLowColor(fLowColor);
    const int32 count = CountValueProviders();
    PictureLock lock(fBitmap.get());
    if (count == 0 || !lock)
        return;

    const BRect area = ChartRect();
    const WrapStep step = WrapAt(area, NextColumn(fColumn), fPageSize, fShowBorder);
    fColumn = step.column;
    if (step.wraps)
        WrapPicture(step);

    SourceStack stack(area, count, fShowBorder);
    for (int32 i = 0; i < count; i++) {
        const auto slot = static_cast<size_t>(i);
        const BPoint base(fColumn, stack.Base());
        const BPoint top(fColumn, stack.Push(NextShare(slot, sampler, newest)));
        DrawStep(slot, base, top, !step.wraps);
        fLastPoints[slot] = top;
    }
    fHistory.Add(newest->Time(), fShares, count);
    const float lastY = fLastPoints[static_cast<size_t>(count - 1)].y;
    const float column = fColumn;
    if (fColumn == 0)
        fColumn = kColumnZeroDrawn;

    const bool textChanged = TakeValueText(sampler, newest);
    if (step.wraps) {
        DrawBitmap(fBitmap.get(), area, area);
        fValueCaption.drawn = kNothingDrawn;
        fTitleCaption.drawn = kNothingDrawn;
        DrawValue(false);
        DrawTitle(false);
        if (fShowBorder)
            DrawBorder();
        return;
    }
    // A border that was switched on before the first sample.
    if (fShowBorder && column < area.left)
        DrawBorder();
    const auto runsUnder = [&](const BRect& caption) {
        return caption.left <= column && column <= caption.right && lastY <= caption.bottom;
    };
    if (textChanged || runsUnder(fValueCaption.drawn))
        DrawValue(true);
    if (runsUnder(fTitleCaption.drawn))
        DrawTitle(true);
}

void ChartView::WrapPicture(const WrapStep& step)
{
    PixelRows pixels(fBitmap.get());
    if (step.source.IsValid())
        pixels.MoveColumns(step.source, static_cast<int32>(step.target.left - step.source.left));
    pixels.Fill(step.cleared, PixelWord(fLowColor));
    fHistory.KeepNewest(static_cast<int32>(step.column - ChartRect().left));
    for (int32 i = 0; i < CountValueProviders(); i++)
        fLastPoints[static_cast<size_t>(i)].x = fColumn - 1;
}

// One source's part of a column: into the picture, and to the screen if that is not drawn whole.
void ChartView::DrawStep(size_t source, BPoint base, BPoint top, bool onScreen)
{
    BPoint from = base;
    if (fChartType == kLineChart)
        from = fColumn == 0 ? BPoint(0, top.y) : fLastPoints[source];
    else if (fChartType == kPointChart)
        from = top;
    fPen->SetHighColor(fChartColors[source]);
    fPen->StrokeLine(from, top);
    if (onScreen) {
        SetHighColor(fChartColors[source]);
        StrokeLine(from, top);
    }
}

void ChartView::RefreshGauge(Sysinfo* sampler, SysinfoNode* newest)
{
    SetDrawingMode(B_OP_COPY);
    SetLowColor(fLowColor);
    const int32 count = CountValueProviders();
    if (count == 0)
        return;
    const BRect area = ChartRect();
    GaugeRow row(area, count, fVertical);
    for (int32 i = 0; i < count; i++) {
        const auto slot = static_cast<size_t>(i);
        fGaugeEnds[slot] = row.Push(NextShare(slot, sampler, newest));
    }
    fHistory.Add(newest->Time(), fShares, count);
    DrawGauge(area);
    TakeValueText(sampler, newest);
    if (fValueVP != nullptr)
        DrawValue(false);
    DrawTitle(false);
}

// The caption's text of this sample, when its turn has come; true when it changed.
bool ChartView::TakeValueText(Sysinfo* sampler, SysinfoNode* newest)
{
    if (fValueVP == nullptr)
        return false;
    if (!fValueSkip.Step()) {
        // Smoothing has to see every sample.
        if (fValueVP->Flags() & VP_EXP_AVERAGE)
            fValueVP->Value(sampler, newest);
        return false;
    }
    char text[ValueProvider::kValueStringLength] = "";
    fValueVP->GetValueString(text, sampler, newest);
    if (std::strcmp(text, fValueText) == 0)
        return false;
    std::memcpy(fValueText, text, sizeof(fValueText));
    return true;
}
