// SPDX-License-Identifier: MIT
#include "kits/interface/Dragger.h"
#include "kits/interface/Screen.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartRanges.h"
#include "src/chart/ChartView.h"
#include "src/chart/PixelRows.h"

// A chart's colours, captions and switches. Each takes effect at once, on the history too.

void ChartView::ReplaceInPicture(uint32 from, uint32 to)
{
    PictureLock lock(fBitmap.get());
    PixelRows(fBitmap.get()).Replace(from, to);
}

void ChartView::UpdateDragger()
{
    LooperLock lock(this);
    fDragger->SetViewColor(fLowColor);
    if (lock)
        fDragger->Invalidate();
}

rgb_color ChartView::CalcAA(rgb_color text, int16 target, float value) const
{
    rgb_color partner = AverageColor(fChartColors[0], fBackgroundColor);
    if (target == kAATargetChart)
        partner = fChartColors[0];
    else if (target == kAATargetBackground)
        partner = fBackgroundColor;
    return FadeColor(text, partner, value);
}

void ChartView::UpdateAAColors()
{
    for (ChartCaption* caption : {&fValueCaption, &fTitleCaption})
        caption->aaColor = CalcAA(caption->color, caption->aaTarget, caption->aaValue);
}

void ChartView::SetChartColor(rgb_color color, int32 index)
{
    if (index < 0 || index >= kMaxSources)
        return;
    rgb_color& old = fChartColors[static_cast<size_t>(index)];
    if (old == color)
        return;
    LooperLock lock(this);
    ReplaceInPicture(PixelWord(old), PixelWord(color));
    old = color;
    UpdateAAColors();
    RedrawAll();
}

void ChartView::SetBackgroundColor(rgb_color color)
{
    LooperLock lock(this);
    fBackgroundColor = color;
    if (!fTransparent && !fLockBgColor) {
        ReplaceInPicture(PixelWord(fLowColor), PixelWord(color));
        fLowColor = color;
    }
    UpdateAAColors();
    RedrawAll();
    UpdateDragger();
}

void ChartView::MySetLowColor(rgb_color color)
{
    LooperLock lock(this);
    if (fMode == kChartMode && !fTransparent)
        ReplaceInPicture(PixelWord(fLowColor), PixelWord(color));
    fLowColor = color;
    UpdateAAColors();
    UpdateDragger();
    RedrawAll();
}

void ChartView::SetLockBgColor(bool on)
{
    if (on == fLockBgColor || fTransparent)
        return;
    LooperLock lock(this);
    fLockBgColor = on;
    MySetLowColor(on ? BScreen(Window()).DesktopColor() : fBackgroundColor);
}

void ChartView::SetTransparent(bool on)
{
    if (on == fTransparent)
        return;
    LooperLock lock(this);
    fTransparent = on;
    if (on)
        fLowColor = B_TRANSPARENT_COLOR;
    else
        fLowColor = fLockBgColor ? BScreen(Window()).DesktopColor() : fBackgroundColor;
    if (!fLockBgColor) {
        const uint32 background = PixelWord(fBackgroundColor);
        if (on)
            ReplaceInPicture(background, B_TRANSPARENT_MAGIC_RGBA32);
        else
            ReplaceInPicture(B_TRANSPARENT_MAGIC_RGBA32, background);
    }
    UpdateAAColors();
    UpdateDragger();
}

void ChartView::SetBorderColor(rgb_color color)
{
    LooperLock lock(this);
    fBorderColor = color;
    if (fShowBorder)
        DrawBorder();
}

void ChartView::SetShowBorder(bool on)
{
    if (on == fShowBorder)
        return;
    LooperLock lock(this);
    fShowBorder = on;
    if (!on && fMode == kChartMode && fChartType == kSolidChart) {
        // The row that the border covered was never drawn into.
        PictureLock pictureLock(fBitmap.get());
        if (pictureLock) {
            const BRect bounds = Bounds();
            fPen->SetHighColor(fChartColors[0]);
            fPen->StrokeLine(bounds.LeftBottom(), BPoint(fColumn, bounds.bottom));
        }
    }
    Redraw();
}

void ChartView::SetPageSize(float size)
{
    if (InRange("PageSize", size))
        fPageSize = size;
}

void ChartView::SetChartType(int16 type)
{
    if (InRange("ChartType", type))
        fChartType = type;
}

void ChartView::SetSkipValue(int16 skip)
{
    if (InRange("SkipValue", skip))
        fRefreshSkip.skip = skip;
}

void ChartView::SetValueSkipValue(int16 skip)
{
    if (InRange("ValueSkipValue", skip))
        fValueSkip.skip = skip;
}
