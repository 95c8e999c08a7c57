// SPDX-License-Identifier: MIT
#include "src/chart/ChartPicture.h"

#include "kits/interface/View.h"
#include "src/chart/ChartLocks.h"
#include "src/chart/ChartSettings.h"
#include "src/chart/ChartSteps.h"
#include "src/chart/PixelRows.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// True if memory can hold a picture of this size. An archive may claim any frame for the view.
bool IsPictureSize(BRect bounds)
{
    const float columns = bounds.Width() + 1;
    const float rows = bounds.Height() + 1;
    return columns >= 1 && rows >= 1 && columns * rows <= kMaxPixels;
}

} // namespace

ChartPicture::ChartPicture(const ChartSettings& settings, BRect bounds)
    : fSettings(settings)
    , fBounds(bounds)
{
    Clear();
}

void ChartPicture::Clear()
{
    fHistory.KeepNewest(0);
    if (fSettings.mode == kChartMode) {
        MakeBitmap();
        fColumn = 0;
        fStrokes.fill({{}, fBounds.LeftBottom()});
    } else {
        fBitmap.reset();
        fGaugeEnds.fill(0);
    }
}

void ChartPicture::MakeBitmap()
{
    fBitmap.reset();
    fHistory.SetCapacity(IsPictureSize(fBounds) ? static_cast<int32>(fBounds.Width()) + 1 : 0);
    if (fSettings.mode != kChartMode || !IsPictureSize(fBounds))
        return;
    auto bitmap = std::make_unique<BBitmap>(fBounds, B_RGB32, true);
    if (!bitmap->IsValid())
        return;
    fBitmap = std::move(bitmap);
    fPen = new BView(fBounds, "", B_FOLLOW_NONE, B_WILL_DRAW);
    PictureLock lock(fBitmap.get());
    fBitmap->AddChild(fPen);
    fPen->SetViewColor(B_TRANSPARENT_COLOR);
    fPen->SetLowColor(fLowColor);
    fPen->FillRect(fBounds, B_SOLID_LOW);
}

void ChartPicture::Resize(BRect bounds)
{
    fColumn = fSettings.mode == kChartMode ? ColumnAfterResize(fColumn, fBounds.Width(), bounds.Width()) : fColumn;
    fBounds = bounds;
    const std::unique_ptr<BBitmap> old = std::move(fBitmap);
    MakeBitmap();
    if (fBitmap == nullptr || old == nullptr)
        return;
    PictureLock lock(fBitmap.get());
    PictureLock oldLock(old.get());
    fPen->DrawBitmap(old.get(), old->Bounds(), fBitmap->Bounds());
}

void ChartPicture::InsertSource(int32 index)
{
    fCount++;
    fHistory.InsertSource(index);
}

void ChartPicture::RemoveSource(int32 index)
{
    fCount--;
    fHistory.RemoveSource(index);
}

void ChartPicture::RemoveAllSources()
{
    fCount = 0;
    fHistory.KeepNewest(0);
}

void ChartPicture::StartNextSource()
{
    if (fSettings.mode != kChartMode)
        return;
    const auto slot = static_cast<size_t>(fCount);
    const float bottom = fBounds.bottom - (fSettings.showBorder ? 1.0f : 0.0f);
    fStrokes[slot].to = BPoint(fColumn, fCount == 0 ? bottom : fStrokes[slot - 1].to.y);
}

bool ChartPicture::AddColumn(bigtime_t time, const Shares& shares)
{
    const BRect area = Area();
    const WrapStep step = WrapAt(area, NextColumn(fColumn), fSettings.pageSize, fSettings.showBorder);
    PictureLock lock(fBitmap.get());
    fColumn = step.column;
    if (step.wraps)
        Wrap(step);

    SourceStack stack(area, fCount, fSettings.showBorder);
    for (size_t i = 0; i < static_cast<size_t>(fCount); i++) {
        const BPoint base(fColumn, stack.Base());
        const BPoint last = fStrokes[i].to;
        Stroke& stroke = fStrokes[i];
        stroke.to = BPoint(fColumn, stack.Push(shares[i]));
        stroke.from = base;
        if (fSettings.chartType == kLineChart)
            stroke.from = fColumn == 0 ? BPoint(0, stroke.to.y) : last;
        else if (fSettings.chartType == kPointChart)
            stroke.from = stroke.to;
        fPen->SetHighColor(fSettings.chartColors[i]);
        fPen->StrokeLine(stroke.from, stroke.to);
    }
    std::copy_n(shares.begin(), fCount, fShares.begin());
    fHistory.Add(time, shares, fCount);
    if (fColumn == 0)
        fColumn = kColumnZeroDrawn;
    return step.wraps;
}

void ChartPicture::Wrap(const WrapStep& step)
{
    PixelRows pixels(fBitmap.get());
    if (step.source.IsValid())
        pixels.MoveColumns(step.source, static_cast<int32>(step.target.left - step.source.left));
    pixels.Fill(step.cleared, PixelWord(fLowColor));
    fHistory.KeepNewest(static_cast<int32>(step.column - Area().left));
    for (size_t i = 0; i < static_cast<size_t>(fCount); i++)
        fStrokes[i].to.x = fColumn - 1;
}

void ChartPicture::AddGauge(bigtime_t time, const Shares& shares)
{
    GaugeRow row(Area(), fCount, fSettings.vertical);
    for (size_t i = 0; i < static_cast<size_t>(fCount); i++)
        fGaugeEnds[i] = row.Push(shares[i]);
    std::copy_n(shares.begin(), fCount, fShares.begin());
    fHistory.Add(time, shares, fCount);
}

void ChartPicture::DrawGauge(BView& view, BRect update) const
{
    view.SetDrawingMode(B_OP_COPY);
    view.SetLowColor(fLowColor);
    if (fCount == 0) {
        view.FillRect(update, B_SOLID_LOW);
        return;
    }
    const BRect area = Area();
    BRect segment;
    for (size_t i = 0; i < static_cast<size_t>(fCount); i++) {
        segment = GaugeSegment(area, i == 0 ? nullptr : &segment, fGaugeEnds[i], fSettings.vertical);
        if (!segment.Intersects(update))
            continue;
        view.SetHighColor(fSettings.chartColors[i]);
        view.FillRect(segment & update);
    }
    const BRect rest = GaugeRemainder(area, segment, fSettings.vertical) & update;
    if (rest.IsValid())
        view.FillRect(rest, B_SOLID_LOW);
}

bool ChartPicture::MoveColumnTo(float column)
{
    PictureLock lock(fBitmap.get());
    if (!lock || column == fColumn || column > fBounds.right + 1)
        return false;
    const BRect area = Area();
    const float from = std::floor(fColumn);
    const float to = std::floor(column);
    const uint32 low = PixelWord(fLowColor);
    PixelRows rows(fBitmap.get());
    const auto distance = static_cast<int32>(to - from);
    if (distance > 0) {
        rows.MoveColumns(BRect(area.left, area.top, area.right - (to - from), area.bottom), distance);
        rows.Fill(BRect(area.left, area.top, area.left + (to - from) - 1, area.bottom), low);
    } else if (distance < 0) {
        rows.MoveColumns(BRect(area.left + (from - to), area.top, area.right, area.bottom), distance);
        rows.Fill(BRect(to + 1, area.top, from, area.bottom), low);
        fHistory.KeepNewest(distance + fHistory.CountRows());
    }
    fColumn = ColumnBefore(column);
    for (size_t i = 0; i < static_cast<size_t>(fCount); i++)
        fStrokes[i].to.x = column;
    return true;
}

void ChartPicture::SetLowColor(rgb_color color, bool recolour)
{
    if (recolour)
        Replace(fLowColor, color);
    fLowColor = color;
}

void ChartPicture::Replace(rgb_color from, rgb_color to)
{
    PictureLock lock(fBitmap.get());
    PixelRows(fBitmap.get()).Replace(PixelWord(from), PixelWord(to));
}

void ChartPicture::DrawUncoveredRow()
{
    PictureLock lock(fBitmap.get());
    if (!lock || fSettings.chartType != kSolidChart)
        return;
    fPen->SetHighColor(fSettings.chartColors[0]);
    fPen->StrokeLine(fBounds.LeftBottom(), BPoint(fColumn, fBounds.bottom));
}

int32 ChartPicture::SourceAt(BPoint where) const
{
    if (fSettings.mode == kChartMode)
        return SourceInBitmap(where);
    for (int32 i = 0; i < fCount; i++) {
        const float end = fGaugeEnds[static_cast<size_t>(i)];
        if (fSettings.vertical ? where.y >= end : where.x <= end)
            return i;
    }
    return -1;
}

// The slots without a source have colours too, and the background may have one of these.
int32 ChartPicture::SourceInBitmap(BPoint where) const
{
    PictureLock lock(fBitmap.get());
    const rgb_color shown =
        PixelColor(PixelRows(fBitmap.get()).At(static_cast<int32>(where.x), static_cast<int32>(where.y)));
    for (int32 i = 0; i < fCount; i++)
        if (shown == fSettings.chartColors[static_cast<size_t>(i)])
            return i;
    return -1;
}

BRect ChartPicture::Area() const
{
    return ChartRect(fBounds, fSettings.showBorder);
}

void ChartPicture::SetColumn(float column)
{
    fColumn = column;
    // The first source keeps its start at the view's edge.
    for (size_t i = 1; i < fStrokes.size(); i++)
        fStrokes[i].to.x = column;
}
