// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

#include <array>

namespace kits {

/// The changed pixels of a view as a few rectangles: a column and a caption are shown as two small rectangles, not as
/// the large one around both.
class DirtyRects {
public:
    static constexpr int32 kMax = 8;

    bool IsEmpty() const { return fCount == 0; }
    void MakeEmpty() { fCount = 0; }
    const PixelRect* begin() const { return fRects.data(); }
    const PixelRect* end() const { return fRects.data() + fCount; }

    void Add(PixelRect rect)
    {
        if (rect.IsEmpty())
            return;
        // Joins it with one of them if that adds few pixels, until nothing joins.
        for (int32 i = 0; i < fCount;) {
            const PixelRect both = Union(fRects[static_cast<size_t>(i)], rect);
            if (Area(both) > Area(fRects[static_cast<size_t>(i)]) + Area(rect)) {
                i++;
                continue;
            }
            rect = both;
            fRects[static_cast<size_t>(i)] = fRects[static_cast<size_t>(--fCount)];
            i = 0;
        }
        if (fCount == kMax) {
            for (const PixelRect& other : *this)
                rect = Union(rect, other);
            fCount = 0;
        }
        fRects[static_cast<size_t>(fCount++)] = rect;
    }

private:
    static int64 Area(const PixelRect& rect) { return static_cast<int64>(rect.Width()) * rect.Height(); }

    std::array<PixelRect, kMax> fRects;
    int32 fCount = 0;
};

} // namespace kits
