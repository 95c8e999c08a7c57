// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"

/// The arithmetic of a chart, one sample at a time: where its column goes, what moves when it is full, how high its
/// sources are stacked. Nothing here draws, locks or keeps anything but what it is given.
///
/// A *column* is the x coordinate of the newest sample. 0 means that nothing was drawn yet; to tell that from "column 0
/// was drawn", a chart then holds kColumnZeroDrawn.

/// Holds as column 0, and goes on to column 1.
inline constexpr float kColumnZeroDrawn = 1.0e-7f;

/// Page sizes above this scroll by one pixel.
inline constexpr float kLargestPage = 0.99f;

/// The part of a chart that samples are drawn into: all of it, or what the border leaves.
BRect ChartRect(BRect bounds, bool border);

/// The column of the next sample, before a chart wraps. Column 0 stays, so that it is drawn once.
float NextColumn(float column);

/// After which column the next sample goes to this one. Column 0 is the first: before it nothing was drawn yet.
float ColumnBefore(float column);

/// What happens to a chart's picture before a column is drawn.
struct WrapStep {
    bool wraps = false; ///< the picture moves; else nothing below counts but the column
    float column = 0;   ///< where this sample goes
    BRect source;       ///< these pixels move; invalid: none
    BRect target;       ///< to here
    BRect cleared;      ///< then this is filled with the low colour
};

/// @param area      what ChartRect() gave
/// @param column    what NextColumn() gave
/// @param pageSize  the part of the width that stays; above kLargestPage the chart scrolls by one pixel
WrapStep WrapAt(BRect area, float column, float pageSize, bool border);

/// Stacks the sources of one sample upon each other.
class SourceStack {
public:
    /// @param count  of the sources, at least 1
    SourceStack(BRect area, int32 count, bool border);

    /// The lower end of the next source's line.
    float Base() const { return fBase; }

    /// Takes the next source: the upper end of its line.
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

    /// Takes the next source: the end of its segment, an x coordinate, or a y coordinate in a vertical gauge.
    float Push(double fraction);

private:
    float fPosition;
    float fRoom;
    bool fVertical;
};

/// The segment that ends at @p end and follows @p previous; the first one follows the gauge's area.
BRect GaugeSegment(BRect area, const BRect* previous, float end, bool vertical);

/// What the segments leave; @p last is the last one.
BRect GaugeRemainder(BRect area, BRect last, bool vertical);

/// The column that a chart of width @p oldWidth has at another width.
float ColumnAfterResize(float column, float oldWidth, float width);

/// A value as a share that can be drawn: what is not a number is 0, the rest lies in -1 to 1.
double DrawableFraction(double value);

/// The band of chart @p index of @p count in a holder with these bounds: equal bands over the whole width, of whole
/// pixels, touching; the last one takes what the rounding left.
BRect ChartBand(BRect bounds, int32 count, int32 index);

/// Lets every (skip + 1)th step through.
struct SkipCounter {
    int16 counter = 0;

    /// Counts one step; true when it is one that goes through.
    bool Step(int16 skip);
};

/// Lets steps through that come more than 20 milliseconds after the last one that did.
class RefreshThrottle {
public:
    /// @param now  system_time(), as of the last step that counts
    void Start(bigtime_t now) { fLast = now; }
    bool Passes(bigtime_t now);

private:
    bigtime_t fLast = 0;
};
