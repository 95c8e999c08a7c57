// SPDX-License-Identifier: MIT
#include "kits/interface/Dragger.h"
#include "kits/interface/Screen.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartView.h"
#include "src/chart/PixelRows.h"
#include "src/support/Changes.h"
#include "src/support/Tr.h"

#include <cstring>

// Sets a chart's colours, captions and switches. Each takes effect at once, on the history too.

void ChartView::SetTitle(const char* text, int32 length)
{
    size_t size = 0;
    if (text != nullptr && length >= 0)
        size = length == 0 ? std::strlen(text) : strnlen(text, static_cast<size_t>(length));
    LooperLock lock(this);
    fSettings.titleText.assign(text == nullptr ? "" : text, size);
    fSettings.titleText.resize(kits::CutLength(fSettings.titleText, kMaxTitleLength));
    Changes::Note();
    SetAccessibleName(fSettings.titleText.empty() ? Tr("Chart") : Title());
    DrawCaption(fCaptions.Title(), true);
}

void ChartView::ShowCaption(ChartCaption& caption, bool on)
{
    LooperLock lock(this);
    caption.look.shown = on;
    Changes::Note();
    if (!on && fCaptions.Chosen() == nullptr)
        fCaptions.Choose(nullptr);
    DrawCaption(caption, true);
    if (!on)
        caption.drawn = kNothingDrawn;
}

void ChartView::SetCaptionFont(ChartCaption& caption, const FFont* font)
{
    if (font == nullptr || !kValueFontField.Holds(*font))
        return;
    LooperLock lock(this);
    caption.look.font = *font;
    Changes::Note();
    fCaptions.FontChanged(caption);
    fCaptions.MoveTo(caption, caption.look.where, Bounds());
    DrawCaption(caption, true);
    const BRect bounds = Bounds();
    if (fSettings.showBorder && (bounds | caption.drawn) != bounds)
        DrawBorder();
}

void ChartView::SetCaptionColor(ChartCaption& caption, rgb_color color)
{
    LooperLock lock(this);
    caption.look.color = color;
    Changes::Note();
    fCaptions.ColorChanged(caption);
    DrawCaption(caption, true);
}

void ChartView::SetCaptionAATarget(ChartCaption& caption, int16 target)
{
    if (!kValueAATargetField.Holds(target))
        return;
    caption.look.aaTarget = target;
    SetCaptionColor(caption, caption.look.color);
}

void ChartView::SetCaptionAAValue(ChartCaption& caption, float value)
{
    if (!kValueAAValueField.Holds(value))
        return;
    caption.look.aaValue = value;
    FFont& font = caption.look.font;
    font.SetFlags(value == 0 ? font.Flags() | B_DISABLE_ANTIALIASING : font.Flags() & ~B_DISABLE_ANTIALIASING);
    SetCaptionColor(caption, caption.look.color);
}

void ChartView::SetChartColor(rgb_color color, int32 index)
{
    if (index < 0 || index >= kMaxSources || ChartColor(index) == color)
        return;
    LooperLock lock(this);
    fPicture.Replace(ChartColor(index), color);
    fSettings.chartColors[static_cast<size_t>(index)] = color;
    Changes::Note();
    fCaptions.ColorsChanged();
    RedrawAll();
}

void ChartView::SetBackgroundColor(rgb_color color)
{
    LooperLock lock(this);
    fSettings.backgroundColor = color;
    Changes::Note();
    if (!fSettings.transparent && !fSettings.lockBgColor)
        fPicture.SetLowColor(color, true);
    fCaptions.ColorsChanged();
    RedrawAll();
    UpdateDragger();
}

void ChartView::MySetLowColor(rgb_color color)
{
    LooperLock lock(this);
    fPicture.SetLowColor(color, !fSettings.transparent);
    Changes::Note();
    fCaptions.ColorsChanged();
    UpdateDragger();
    RedrawAll();
}

void ChartView::SetLockBgColor(bool on)
{
    if (on == fSettings.lockBgColor || fSettings.transparent)
        return;
    LooperLock lock(this);
    fSettings.lockBgColor = on;
    MySetLowColor(on ? BScreen(Window()).DesktopColor() : fSettings.backgroundColor);
}

void ChartView::SetTransparent(bool on)
{
    if (on == fSettings.transparent)
        return;
    LooperLock lock(this);
    fSettings.transparent = on;
    Changes::Note();
    if (on)
        fPicture.SetLowColor(B_TRANSPARENT_COLOR, false);
    else
        fPicture.SetLowColor(fSettings.lockBgColor ? BScreen(Window()).DesktopColor() : fSettings.backgroundColor,
                             false);
    if (!fSettings.lockBgColor) {
        const rgb_color magic = PixelColor(B_TRANSPARENT_MAGIC_RGBA32);
        fPicture.Replace(on ? fSettings.backgroundColor : magic, on ? magic : fSettings.backgroundColor);
    }
    fCaptions.ColorsChanged();
    UpdateDragger();
}

void ChartView::UpdateDragger()
{
    LooperLock lock(this);
    fDragger->SetViewColor(fPicture.LowColor());
    if (lock)
        fDragger->Invalidate();
}

void ChartView::SetBorderColor(rgb_color color)
{
    LooperLock lock(this);
    fSettings.borderColor = color;
    Changes::Note();
    if (fSettings.showBorder)
        DrawBorder();
}

void ChartView::SetShowBorder(bool on)
{
    if (on == fSettings.showBorder)
        return;
    LooperLock lock(this);
    fSettings.showBorder = on;
    Changes::Note();
    if (!on)
        fPicture.DrawUncoveredRow();
    Draw(Bounds());
}

void ChartView::SetVertical(bool vertical)
{
    fSettings.vertical = vertical;
    Changes::Note();
}

void ChartView::SetMode(int16 mode)
{
    if (mode == fSettings.mode || !kModeField.Holds(mode))
        return;
    LooperLock lock(this);
    fSettings.mode = mode;
    Changes::Note();
    fPicture.Clear();
    if (mode == kGaugeMode && lock) {
        SetLowColor(fPicture.LowColor());
        FillRect(Bounds(), B_SOLID_LOW);
    }
    Draw(Bounds());
}
