// SPDX-License-Identifier: MIT
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartView.h"

// What a chart puts on the screen, but for the samples themselves (ChartViewRefresh.cpp).

void ChartView::Redraw()
{
    LooperLock lock(this);
    if (lock)
        Draw(Bounds());
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
        fChosen = nullptr;
    SetDrawingMode(B_OP_COPY);
    RestoreUnder(update);
    if (fValueCaption.shown && fValueCaption.drawn.Intersects(update)) {
        fValueCaption.drawn = kNothingDrawn;
        DrawValue(false);
    }
    if (fTitleCaption.shown && fTitleCaption.drawn.Intersects(update)) {
        fTitleCaption.drawn = kNothingDrawn;
        DrawTitle(false);
    }
    if (fShowBorder)
        DrawBorder();
    DrawFocus();
}

// Who walks the charts by keyboard sees where he is; a click shows that by itself.
void ChartView::DrawFocus()
{
    if (!IsFocus())
        fFocusByMouse = false;
    else if (!fFocusByMouse) {
        SetHighColor(ui_color(B_KEYBOARD_NAVIGATION_COLOR));
        StrokeRect(Bounds());
    }
}

// The chart or gauge itself, without captions and border.
void ChartView::RestoreUnder(BRect area)
{
    if (fMode == kGaugeMode) {
        DrawGauge(area);
        return;
    }
    PictureLock lock(fBitmap.get());
    if (lock)
        DrawBitmap(fBitmap.get(), area, area);
}

void ChartView::DrawGauge(BRect update)
{
    SetDrawingMode(B_OP_COPY);
    SetLowColor(fLowColor);
    const int32 count = CountValueProviders();
    if (count == 0) {
        FillRect(update, B_SOLID_LOW);
        return;
    }
    const BRect area = ChartRect();
    BRect segment;
    for (int32 i = 0; i < count; i++) {
        const auto slot = static_cast<size_t>(i);
        segment = GaugeSegment(area, i == 0 ? nullptr : &segment, fGaugeEnds[slot], fVertical);
        if (!segment.Intersects(update))
            continue;
        SetHighColor(fChartColors[slot]);
        FillRect(segment & update);
    }
    const BRect rest = GaugeRemainder(area, segment, fVertical) & update;
    if (rest.IsValid())
        FillRect(rest, B_SOLID_LOW);
}

void ChartView::DrawBorder()
{
    LooperLock lock(this);
    if (!lock)
        return;
    SetHighColor(fBorderColor);
    StrokeRect(Bounds());
}

void ChartView::RedrawAll()
{
    LooperLock lock(this);
    if (!lock)
        return;
    DrawValue(true);
    DrawTitle(true);
    Draw(Bounds());
}

const char* ChartView::TextOf(const ChartCaption& caption) const
{
    return &caption == &fValueCaption ? fValueText : fTitle.c_str();
}

// The title lies above the value; what a caption uncovers of the other is drawn again.
void ChartView::DrawCaption(ChartCaption& caption, bool restore)
{
    LooperLock lock(this);
    if (!lock)
        return;
    BRect touched = kNothingDrawn;
    if (restore && caption.drawn.IsValid()) {
        // Turned text reaches out of its rectangle.
        touched = caption.font.Rotation() == 0 ? caption.drawn : Bounds();
        RestoreUnder(touched);
        if (fShowBorder && !ChartRect().Contains(touched))
            DrawBorder();
    }
    if (&caption == &fTitleCaption && fValueCaption.drawn.Intersects(touched))
        PaintCaption(fValueCaption);
    PaintCaption(caption);
    if (&caption == &fValueCaption && fTitleCaption.drawn.Intersects(touched | caption.drawn))
        PaintCaption(fTitleCaption);
}

void ChartView::PaintCaption(ChartCaption& caption)
{
    if (!caption.shown)
        return;
    SetFont(&caption.font);
    SetHighColor(caption.color);
    SetLowColor(caption.aaColor);
    SetDrawingMode(B_OP_COPY);
    const char* text = TextOf(caption);
    DrawString(text, caption.where);
    caption.drawn = CaptionRect(caption.where, StringWidth(text), caption.height);
    if (&caption == fChosen) {
        // Within what is restored when the caption goes.
        SetHighColor(ui_color(B_KEYBOARD_NAVIGATION_COLOR));
        StrokeRect(caption.drawn);
    }
}
