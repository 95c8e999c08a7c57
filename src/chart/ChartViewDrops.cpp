// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/interface/Alert.h"
#include "kits/support/TypeConstants.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartRanges.h"
#include "src/chart/ChartView.h"
#include "src/chart/PixelRows.h"
#include "src/sampling/SourceName.h"
#include "src/support/ColorMessage.h"
#include "src/support/Tr.h"

#include <algorithm>
#include <cstring>
#include <string>

// What can be dropped on a chart. Everything here may come from another program.

namespace {

// More entries of one drop than this are not even looked at.
constexpr int32 kMaxLookedAt = 256;

bool LookAlike(rgb_color one, rgb_color other)
{
    return one.red == other.red && one.green == other.green && one.blue == other.blue;
}

void ShowTooManySources()
{
    auto* alert = new BAlert(Tr("Qel alert"),
                             Tr("The maximal number of sources\nreached. Mail me if you need more !\n(Because of your "
                                "16-way SMP box or sg. ;)"),
                             Tr("OK"));
    alert->Go(nullptr);
}

} // namespace

BPoint ChartView::DropPlace(BMessage* message) const
{
    return ConvertFromScreen(message->DropPoint());
}

void ChartView::TextDropped(BMessage* message)
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (!message->WasDropped() || !IsOn(fTitleCaption, DropPlace(message)) ||
        message->FindData("text/plain", B_MIME_TYPE, &data, &size) != B_OK || size <= 0)
        return;
    const auto length = static_cast<size_t>(std::min<ssize_t>(size, kMaxTitleLength + 1));
    std::string text(static_cast<const char*>(data), strnlen(static_cast<const char*>(data), length));
    // A title is one line.
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<uint8>(c) < ' '; }, ' ');
    SetTitle(text.c_str());
}

void ChartView::SourcesDropped(BMessage* message)
{
    LooperLock lock(this);
    const bool dropped = message->WasDropped();
    const BPoint where = dropped ? DropPlace(message) : BPoint();
    const bool onTitle = dropped && IsOn(fTitleCaption, where);
    const bool onValue = dropped && !onTitle && IsOn(fValueCaption, where);
    BMessage archive;
    for (int32 i = 0; i < kMaxLookedAt && message->FindMessage("ValueProvider", i, &archive) == B_OK; i++) {
        if (!IsSourceArchive(archive, false))
            continue;
        auto source = std::make_unique<ValueProvider>(&archive);
        if (onTitle) {
            SetTitle(SourceName(source->Target(), source->Flags()).c_str());
        } else if (onValue) {
            fValueVP = std::move(source);
        } else if (CountValueProviders() >= kMaxSources) {
            ShowTooManySources();
            return;
        } else {
            if (fValueVP != nullptr && fValueVP->Target() == VP_NONE)
                fValueVP = std::move(source);
            StartSource(CountValueProviders());
            AddValueProvider(&archive, -1);
        }
    }
}

// A new source's curve begins where the chart is now, upon the source below it.
void ChartView::StartSource(int32 index)
{
    if (fMode != kChartMode)
        return;
    const auto slot = static_cast<size_t>(index);
    const float bottom = Bounds().bottom - (fShowBorder ? 1.0f : 0.0f);
    fLastPoints[slot] = BPoint(fColumn, index == 0 ? bottom : fLastPoints[slot - 1].y);
}

void ChartView::FontDropped(BMessage* message)
{
    if (!message->WasDropped())
        return;
    FFont font;
    if (FindMessageFont(message, "font", 0, &font) != B_OK)
        return;
    const BPoint where = DropPlace(message);
    for (ChartCaption* caption : {&fValueCaption, &fTitleCaption}) {
        if (!IsOn(*caption, where))
            continue;
        // Only what the font carries changes.
        FFont changed(caption->font);
        font.UpdateTo(&changed, FFont::kAll);
        SetCaptionFont(*caption, &changed);
        return;
    }
}

void ChartView::ColorDropped(BMessage* message)
{
    rgb_color color;
    if (message->WasDropped() && FindColorMessage(*message, &color))
        ColorDropped(DropPlace(message), color);
}

void ChartView::ColorDropped(BPoint where, rgb_color color)
{
    LooperLock lock(this);
    if (IsOn(fValueCaption, where))
        SetValueColor(color);
    else if (IsOn(fTitleCaption, where))
        SetTitleColor(color);
    else if (!Bounds().Contains(where))
        ColorSource(-1, color); // pasted
    else
        ColorSource(fMode == kChartMode ? SourceInPicture(where) : SourceInGauge(where), color);
}

// Gives a source the colour, or the background with -1, unless two of them would then look alike.
void ChartView::ColorSource(int32 source, rgb_color color)
{
    bool taken = source != -1 && LookAlike(color, fLowColor);
    for (int32 i = 0; i < CountValueProviders(); i++)
        taken = taken || (i != source && LookAlike(color, ChartColor(i)));
    if (taken) {
        beep();
    } else if (source != -1) {
        SetChartColor(color, source);
    } else {
        if (!fTransparent)
            SetLockBgColor(false);
        SetBackgroundColor(color);
    }
}

// The slots without a source have colours too, and the background may have one of these.
int32 ChartView::SourceInPicture(BPoint where) const
{
    PictureLock lock(fBitmap.get());
    const rgb_color shown =
        PixelColor(PixelRows(fBitmap.get()).At(static_cast<int32>(where.x), static_cast<int32>(where.y)));
    for (int32 i = 0; i < CountValueProviders(); i++)
        if (shown == ChartColor(i))
            return i;
    return -1;
}

int32 ChartView::SourceInGauge(BPoint where) const
{
    for (int32 i = 0; i < CountValueProviders(); i++) {
        const float end = fGaugeEnds[static_cast<size_t>(i)];
        if (fVertical ? where.y >= end : where.x <= end)
            return i;
    }
    return -1;
}
