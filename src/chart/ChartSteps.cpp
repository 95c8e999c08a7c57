// SPDX-License-Identifier: MIT
#include "src/chart/ChartSteps.h"

#include <algorithm>
#include <cmath>

BRect ChartRect(BRect bounds, bool border)
{
    if (border)
        bounds.InsetBy(1, 1);
    return bounds;
}

float NextColumn(float column)
{
    return column == 0 ? column : std::floor(column + 1);
}

float ColumnBefore(float column)
{
    if (column == 1)
        return kColumnZeroDrawn;
    return std::max(column - 1, 0.0f);
}

WrapStep WrapAt(BRect area, float column, float pageSize, bool border)
{
    const float width = area.right - area.left;
    const float inset = border ? 1.0f : 0.0f;
    WrapStep step;
    step.column = column;
    step.wraps = column > width + inset;
    if (!step.wraps)
        return step;

    if (pageSize > kLargestPage) {
        step.source = BRect(area.left + 1, area.top, area.right, area.bottom);
        step.target = BRect(area.left, area.top, area.right - 1, area.bottom);
        step.cleared = BRect(area.right, area.top, area.right, area.bottom);
        // A chart that became narrower has its column beyond its end: the newest sample goes to the end.
        step.column = std::min(column - 1, area.right);
        return step;
    }
    // In double: 0.7f of 100 pixels is a little less than 70, and the product of two floats is exact.
    const float kept = static_cast<float>(std::floor(static_cast<double>(width) * static_cast<double>(pageSize)));
    step.column = kept + inset;
    step.source = BRect(width - kept + 1 + inset, area.top, area.right, area.bottom);
    step.target = BRect(area.left, area.top, kept - 1 + inset, area.bottom);
    step.cleared = BRect(step.column, area.top, area.right, area.bottom);
    return step;
}

SourceStack::SourceStack(BRect area, int32 count, bool border)
    : fBase(area.bottom - area.top + (border ? 1.0f : 0.0f))
    , fRoom(static_cast<double>((area.bottom - area.top) / static_cast<float>(count)) - 1.0)
{
}

float SourceStack::Push(double fraction)
{
    const float top = fBase - static_cast<float>(std::ceil(fRoom * DrawableFraction(fraction)));
    fBase = top - 1;
    return top;
}

GaugeRow::GaugeRow(BRect area, int32 count, bool vertical)
    : fPosition(vertical ? area.bottom - area.top - 1 : 0)
    , fRoom((vertical ? area.bottom - area.top : area.right - area.left) / static_cast<float>(count) - 1)
    , fVertical(vertical)
{
}

float GaugeRow::Push(double fraction)
{
    const float length = static_cast<float>(fRoom * DrawableFraction(fraction));
    const float end = fVertical ? fPosition - length : fPosition + length;
    fPosition = fVertical ? end - 1 : end + 1;
    return end;
}

BRect GaugeSegment(BRect area, const BRect* previous, float end, bool vertical)
{
    BRect segment = area;
    if (vertical) {
        // One row into the segment below, unlike the horizontal gauge.
        if (previous != nullptr)
            segment.bottom = previous->top + 1;
        segment.top = end;
    } else {
        if (previous != nullptr)
            segment.left = previous->right + 1;
        segment.right = end;
    }
    return segment;
}

BRect GaugeRemainder(BRect area, BRect last, bool vertical)
{
    if (vertical)
        return BRect(area.left, 0, area.right, last.top + 1);
    return BRect(last.right + 1, area.top, area.right - area.left, area.bottom);
}

float ColumnAfterResize(float column, float oldWidth, float width)
{
    if (!(oldWidth > 0))
        return 0;
    return static_cast<float>(std::floor(static_cast<double>(width) * column / oldWidth));
}

double DrawableFraction(double value)
{
    return std::isnan(value) ? 0.0 : std::clamp(value, -1.0, 1.0);
}

BRect ChartBand(BRect bounds, int32 count, int32 index)
{
    const float width = bounds.right;
    const float band = static_cast<float>(std::ceil(static_cast<double>(bounds.bottom) / count));
    if (band >= 1 && band * static_cast<float>(count - 1) <= bounds.bottom) {
        const float top = band * static_cast<float>(index);
        return BRect(0, top, width, index < count - 1 ? top + band - 1 : bounds.bottom);
    }
    // With so many charts, whole bands of the same height would not fit into the holder: some bands are a row smaller.
    const auto edge = [&](int32 i) {
        return static_cast<float>(std::floor((static_cast<double>(bounds.bottom) + 1) * i / count));
    };
    const float top = edge(index);
    return BRect(0, top, width, std::max(edge(index + 1) - 1, top));
}

bool SkipCounter::Step(int16 skip)
{
    if (counter < skip) {
        counter++;
        return false;
    }
    counter = 0;
    return true;
}

bool RefreshThrottle::Passes(bigtime_t now)
{
    static constexpr bigtime_t kShortest = 20000;
    if (now - fLast <= kShortest)
        return false;
    fLast = now;
    return true;
}
