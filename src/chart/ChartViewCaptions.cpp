// SPDX-License-Identifier: MIT
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartRanges.h"
#include "src/chart/ChartView.h"
#include "src/support/Tr.h"

#include <cstring>

// A chart's two captions: what both can do is written once, for the caption and its text.

void ChartView::SetTitle(const char* text, int32 length)
{
    size_t size = 0;
    if (text != nullptr && length >= 0)
        size = length == 0 ? std::strlen(text) : strnlen(text, static_cast<size_t>(length));
    LooperLock lock(this);
    fTitle.assign(text == nullptr ? "" : text, CutLength(text, size, kMaxTitleLength));
    SetAccessibleName(fTitle.empty() ? Tr("Chart") : fTitle.c_str());
    DrawTitle(true);
}

void ChartView::SetValueColor(rgb_color color)
{
    SetCaptionColor(fValueCaption, color);
}

void ChartView::SetTitleColor(rgb_color color)
{
    SetCaptionColor(fTitleCaption, color);
}

void ChartView::SetCaptionColor(ChartCaption& caption, rgb_color color)
{
    LooperLock lock(this);
    caption.color = color;
    caption.aaColor = CalcAA(color, caption.aaTarget, caption.aaValue);
    DrawCaption(caption, true);
}

void ChartView::SetValueAATarget(int16 target)
{
    SetCaptionAATarget(fValueCaption, target);
}

void ChartView::SetTitleAATarget(int16 target)
{
    SetCaptionAATarget(fTitleCaption, target);
}

void ChartView::SetCaptionAATarget(ChartCaption& caption, int16 target)
{
    if (!InRange("ValueAATarget", target))
        return;
    caption.aaTarget = target;
    SetCaptionColor(caption, caption.color);
}

void ChartView::SetValueAAValue(float value)
{
    SetCaptionAAValue(fValueCaption, value);
}

void ChartView::SetTitleAAValue(float value)
{
    SetCaptionAAValue(fTitleCaption, value);
}

void ChartView::SetCaptionAAValue(ChartCaption& caption, float value)
{
    if (!InRange("ValueAAValue", value))
        return;
    caption.aaValue = value;
    const uint32 flags = caption.font.Flags();
    caption.font.SetFlags(value == 0 ? flags | B_DISABLE_ANTIALIASING : flags & ~B_DISABLE_ANTIALIASING);
    SetCaptionColor(caption, caption.color);
}

void ChartView::SetValueFont(const FFont* font)
{
    SetCaptionFont(fValueCaption, font);
}

void ChartView::SetTitleFont(const FFont* font)
{
    SetCaptionFont(fTitleCaption, font);
}

void ChartView::SetCaptionFont(ChartCaption& caption, const FFont* font)
{
    if (font == nullptr || !InRange("ValueFont", font->Size()))
        return;
    LooperLock lock(this);
    caption.font = *font;
    caption.font.GetHeight(&caption.height);
    ModerateCaption(caption);
    DrawCaption(caption, true);
    const BRect bounds = Bounds();
    if (fShowBorder && (bounds | caption.drawn) != bounds)
        DrawBorder();
}

void ChartView::SetShowValue(bool on)
{
    ShowCaption(fValueCaption, on);
}

void ChartView::SetShowTitle(bool on)
{
    ShowCaption(fTitleCaption, on);
}

void ChartView::ShowCaption(ChartCaption& caption, bool on)
{
    LooperLock lock(this);
    caption.shown = on;
    if (!on && fChosen == &caption)
        fChosen = nullptr;
    DrawCaption(caption, true);
    if (!on)
        caption.drawn = kNothingDrawn;
}

void ChartView::ModerateCaption(ChartCaption& caption)
{
    const float width = caption.font.StringWidth(TextOf(caption));
    caption.where = ModerateStringCoord(caption.where, Bounds(), width, caption.height);
}
