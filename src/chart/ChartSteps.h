// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"

/// The arithmetic of a chart, one sample at a time: where its column goes, what moves when the chart is full, how high
/// its sources are stacked. Nothing here draws or locks.
///
/// A *column* is the x coordinate of the newest sample. 0 means that nothing is drawn yet; a chart that has drawn
/// column 0 holds kColumnZeroDrawn instead.

/// Counts as column 0, after which column 1 comes.
inline constexpr float kColumnZeroDrawn = 1.0e-7f;

/// Page sizes above this scroll by one pixel.
inline constexpr float kLargestPage = 0.99f;

/// Returns the part of a chart in which samples are drawn: all of it, or the part inside the border.
BRect ChartRect(BRect bounds, bool border);

/// Returns the column of the next sample, before a chart wraps. Column 0 remains column 0, so that it is drawn once.
float NextColumn(float column);

/// Returns the column after which the next sample goes to this one. Column 0 is the first: nothing was drawn before it.
float ColumnBefore(float column);

/// The changes of a chart's picture before a column is drawn.
struct WrapStep {
    bool wraps = false; ///< the picture moves; if false, only the column below counts
    float column = 0;   ///< the column of this sample
    BRect source;       ///< the pixels that move; invalid for none
    BRect target;       ///< their destination
    BRect cleared;      ///< the area to fill with the low colour afterwards
};

/// @param area      the result of ChartRect()
/// @param column    the result of NextColumn()
/// @param pageSize  the part of the width that stays; above kLargestPage the chart scrolls by one pixel
WrapStep WrapAt(BRect area, float column, float pageSize, bool border);

/// Stacks the sources of one sample on top of each other.
class SourceStack {
public:
    /// @param count  of the sources, at least 1
    SourceStack(BRect area, int32 count, bool border);

    /// Returns the lower end of the next source's line.
    float Base() const { return fBase; }

    /// Takes the next source and returns the upper end of its line.
    float Push(double fraction);

private:
    float fBase;
    double fRoom;
};

/// Lays the segments of a gauge end to end.
class GaugeRow {
public:
    /// @param count  of the sources, at least 1
    GaugeRow(BRect area, int32 count, bool vertical);

    /// Takes the next source and returns the end of its segment: an x coordinate, or a y coordinate in a vertical
    /// gauge.
    float Push(double fraction);

private:
    float fPosition;
    float fRoom;
    bool fVertical;
};

/// Returns the segment that ends at @p end and follows @p previous; the first one begins at the edge of the gauge's
/// area.
BRect GaugeSegment(BRect area, const BRect* previous, float end, bool vertical);

/// Returns the part that the segments leave free; @p last is the last segment.
BRect GaugeRemainder(BRect area, BRect last, bool vertical);

/// Returns the column that a chart of width @p oldWidth has at another width.
float ColumnAfterResize(float column, float oldWidth, float width);

/// Returns a value as a share that can be drawn: 0 for a value that is not a number, others clamped to -1 to 1.
double DrawableFraction(double value);

/// Returns the band of chart @p index of @p count in a holder with these bounds. The bands are equal, span the whole
/// width, consist of whole pixels and touch; the last one gets the remainder.
BRect ChartBand(BRect bounds, int32 count, int32 index);

/// Lets every (skip + 1)th step through.
struct SkipCounter {
    int16 counter = 0;

    /// Counts one step and returns true if it goes through.
    bool Step(int16 skip);
};

/// Lets only steps through that come more than 20 milliseconds after the last one that went through.
class RefreshThrottle {
public:
    /// @param now  system_time() of the last step that counts
    void Start(bigtime_t now) { fLast = now; }
    bool Passes(bigtime_t now);

private:
    bigtime_t fLast = 0;
};
