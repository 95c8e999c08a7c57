// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Bitmap.h"
#include "kits/support/Color.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "src/chart/ChartHistory.h"

#include <array>
#include <memory>

struct ChartSettings;
struct WrapStep;

/// The largest number of pixels in a chart's picture; a larger chart has none.
inline constexpr float kMaxPixels = 64.0f * 1024 * 1024;

/// The drawing of a chart's sources: as a chart, a column for each sample in a bitmap; as a gauge, the ends of the
/// newest sample's segments. It also keeps the figures behind them. It knows no captions, no border and no screen.
///
/// A sample costs one column: each source is one line on top of the line of the source below it. When the chart is
/// full, its newest part moves to the left; see WrapAt(). A change of colour is one pass over the bitmap's words.
///
/// It needs no screen, no window and no main thread. The lock that guards its settings guards this object, too. The
/// bitmap is locked for each of its changes.
class ChartPicture {
public:
    /// A share for each source in its order, from -1 to 1.
    typedef std::array<double, kMaxSources> Shares;

    /// One source's part of a column.
    struct Stroke {
        BPoint from;
        BPoint to;
    };

    /// Creates an empty picture for a chart with these bounds.
    /// @param settings  of the chart; the caller owns them, and they must outlive this object
    ChartPicture(const ChartSettings& settings, BRect bounds);

    /// Empties the picture and starts again in the current mode of the settings.
    void Clear();
    /// Stretches the present picture to new bounds.
    void Resize(BRect bounds);

    /// Inserts or removes a source: the figures of those behind it move by one place. The drawing stays.
    void InsertSource(int32 index);
    void RemoveSource(int32 index);
    void RemoveAllSources();
    int32 CountSources() const { return fCount; }
    /// Lets the curve of the next source begin in the newest column, on top of the source below it.
    void StartNextSource();

    /// Draws a sample as a column. Does nothing without sources, or in a gauge.
    /// @param time  of the sample, system_time()
    /// @return true if the picture moved to make room; otherwise only the strokes are new
    bool AddColumn(bigtime_t time, const Shares& shares);
    /// Returns the stroke of the source with this index in the newest column.
    const Stroke& StrokeAt(int32 index) const { return fStrokes[static_cast<size_t>(index)]; }

    /// Takes a sample for the gauge. Does nothing without sources.
    void AddGauge(bigtime_t time, const Shares& shares);
    /// Draws a part of the gauge with a view's pen.
    void DrawGauge(BView& view, BRect update) const;

    /// Moves the picture so that the newest column stands at another place; the next sample goes there.
    /// @return false if nothing moved
    bool MoveColumnTo(float column);

    /// Returns the colour of cleared pixels: the background, the desktop's colour, or the transparent magic.
    rgb_color LowColor() const { return fLowColor; }
    /// @param recolour  cleared pixels get the new colour, too
    void SetLowColor(rgb_color color, bool recolour);
    /// Gives every pixel of one colour, alpha included, another colour.
    void Replace(rgb_color from, rgb_color to);
    /// Fills the row that the border covered, as far as the chart is drawn.
    void DrawUncoveredRow();

    /// Returns the source that shows at a place, or -1.
    int32 SourceAt(BPoint where) const;

    /// Returns the part in which samples are drawn, which excludes the border.
    BRect Area() const;
    /// Returns roughly where the next sample's column goes: see ChartSteps.h.
    float Column() const { return fColumn; }
    /// Sets the column of a picture in which nothing is drawn yet.
    void SetColumn(float column);
    /// Returns null for a gauge, and for a chart that is too large. The picture owns the bitmap; read it under its
    /// lock.
    BBitmap* Bitmap() const { return fBitmap.get(); }
    /// Returns the figures behind the picture; for a gauge, as many as a chart of this width would show.
    const ChartHistory& History() const { return fHistory; }
    /// Returns the shares as last drawn.
    const Shares& NewestShares() const { return fShares; }

private:
    void MakeBitmap();
    void Wrap(const WrapStep& step);
    int32 SourceInBitmap(BPoint where) const;

    const ChartSettings& fSettings;
    BRect fBounds;
    std::unique_ptr<BBitmap> fBitmap;
    BView* fPen = nullptr; // draws into fBitmap, which owns it
    rgb_color fLowColor{};
    float fColumn = 0;
    int32 fCount = 0;                           // number of sources
    std::array<Stroke, kMaxSources> fStrokes{}; // each ends at its source's last point
    std::array<float, kMaxSources> fGaugeEnds{};
    Shares fShares{};
    ChartHistory fHistory;
};
