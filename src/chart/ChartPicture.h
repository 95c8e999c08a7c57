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

/// The most pixels of a chart's picture; a larger chart has none.
inline constexpr float kMaxPixels = 64.0f * 1024 * 1024;

/// What a chart has drawn of its sources: as a chart, a column for each sample in a bitmap; as a gauge, where the
/// segments of the newest sample end. It keeps the figures behind them, too. Captions, border and screen are not its.
///
/// A sample costs one column: each source is one line, upon that of the source below it. When the chart is full, its
/// newest part moves to the left, see WrapAt(). A change of colour is one pass over the bitmap's words.
///
/// It needs no screen, no window and no main thread, and is guarded as its settings are. The bitmap is locked for each
/// of its changes.
class ChartPicture {
public:
    /// A share for each source in its order, from -1 to 1.
    typedef std::array<double, kMaxSources> Shares;

    /// One source's part of a column.
    struct Stroke {
        BPoint from;
        BPoint to;
    };

    /// An empty picture for a chart with these bounds.
    /// @param settings  of the chart; stay the caller's and have to stay
    ChartPicture(const ChartSettings& settings, BRect bounds);

    /// Begins anew, empty, in the mode that the settings have now.
    void Clear();
    /// Stretches what is there to new bounds.
    void Resize(BRect bounds);

    /// A source comes or goes: the figures of those behind it move on. What is drawn stays.
    void InsertSource(int32 index);
    void RemoveSource(int32 index);
    void RemoveAllSources();
    int32 CountSources() const { return fCount; }
    /// The curve of the next source to come begins where the chart is now, upon the source below it.
    void StartNextSource();

    /// Draws a sample as a column. Not without sources, nor in a gauge.
    /// @param time  of the sample, system_time()
    /// @return true if the picture moved to make room; else only the strokes are new
    bool AddColumn(bigtime_t time, const Shares& shares);
    /// Of the source with this index in the newest column.
    const Stroke& StrokeAt(int32 index) const { return fStrokes[static_cast<size_t>(index)]; }

    /// Takes a sample for the gauge. Not without sources.
    void AddGauge(bigtime_t time, const Shares& shares);
    /// Draws a part of the gauge with a view's pen.
    void DrawGauge(BView& view, BRect update) const;

    /// Moves the picture so that the newest column comes to stand at another place: the next sample goes there.
    /// @return false if nothing moved
    bool MoveColumnTo(float column);

    /// What is cleared is filled with it: the background, the desktop's colour, or the transparent magic.
    rgb_color LowColor() const { return fLowColor; }
    /// @param recolour  what has been cleared becomes the new colour, too
    void SetLowColor(rgb_color color, bool recolour);
    /// Every pixel of one colour, alpha included, gets another.
    void Replace(rgb_color from, rgb_color to);
    /// Fills the row that the border covered, as far as the chart is drawn.
    void DrawUncoveredRow();

    /// The source that shows at a place, or -1.
    int32 SourceAt(BPoint where) const;

    /// The part that samples are drawn into: the border leaves it.
    BRect Area() const;
    /// Where the next sample's column goes, nearly: see ChartSteps.h.
    float Column() const { return fColumn; }
    /// For a picture in which nothing is drawn yet.
    void SetColumn(float column);
    /// Null for a gauge, and for a chart that is too large. Stays the picture's; read it under its lock.
    BBitmap* Bitmap() const { return fBitmap.get(); }
    /// The figures behind the picture, of a gauge as many as a chart of this width would show.
    const ChartHistory& History() const { return fHistory; }
    /// As last drawn.
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
    int32 fCount = 0;                           // of the sources
    std::array<Stroke, kMaxSources> fStrokes{}; // each ends at its source's last point
    std::array<float, kMaxSources> fGaugeEnds{};
    Shares fShares{};
    ChartHistory fHistory;
};
