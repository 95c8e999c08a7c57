// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"
#include "kits/interface/drawing/PixelGrid.h"

#include <vector>

namespace kits {

/// How much of each pixel the glyphs of a text cover, 0 to 255, row by row. In screen pixels.
struct CoverageMask {
    int32 left = 0; ///< of its first column, from the start of the base line
    int32 top = 0;  ///< of its first row, from the base line; negative is above
    int32 width = 0;
    int32 height = 0;
    std::vector<uint8> coverage;
};

/// Draws into 32-bit words: a bitmap's, or the picture of a window's view. Owns nothing. Writes memory directly, exact
/// to the pixel. Coordinates are logical pixels unless a name says "device". Needs no toolkit.
class Canvas {
public:
    /// How words are stored.
    enum Kind {
        kRaw,  ///< unchanged: a bitmap
        kShown ///< for display: opaque whatever the alpha; the transparent magic word becomes 0, fully transparent
    };

    /// @param stride  words from row to row
    /// @param bounds  of all words, in device pixels from 0, 0
    Canvas(uint32* words, int32 stride, PixelRect bounds, Kind kind, const PixelGrid& grid);

    /// Drawing changes nothing outside this clip; in logical pixels. Initially all words.
    void SetClip(const PixelRect& clip);
    /// The place of pixel (0, 0) of later drawing, from the words' corner; in logical pixels. Only with a grid of scale
    /// 1.
    void SetOrigin(int32 x, int32 y);

    void StrokeLine(int32 fromX, int32 fromY, int32 toX, int32 toY, uint32 word);
    void FillRect(const PixelRect& rect, uint32 word);
    /// Stretches the pixels of `source`, in its own coordinates, over the target; skips those outside of `size`.
    /// @param opaqueOnly  leaves pixels unchanged where the source has the transparent magic word
    void DrawPixels(const uint32* words, int32 stride, int32 width, int32 height, const PixelRect& source,
                    const PixelRect& target, bool opaqueOnly);
    /// @param deviceX,    deviceY the start of the base line
    /// @param deviceClip  nothing outside is changed
    /// @param over        blends onto the existing pixels instead of the low word
    void DrawCoverage(const CoverageMask& mask, int32 deviceX, int32 deviceY, const PixelRect& deviceClip, uint32 low,
                      uint32 high, bool over);

    /// The logical pixels that may have changed since the canvas was made.
    const PixelRect& Changed() const { return fChanged; }
    /// Whether transparent pixels were written, and whether one call made all words opaque after that.
    bool WroteTransparent() const { return fWroteTransparent; }
    bool MadeOpaque() const { return fMadeOpaque; }

    const PixelGrid& Grid() const { return fGrid; }

private:
    uint32 ToStored(uint32 word) const;
    void NoteChanged(const PixelRect& logical);
    void NoteWritten(const PixelRect& device, bool transparent);
    uint32* Row(int32 deviceY) const { return fWords + static_cast<ptrdiff_t>(deviceY) * fStride; }
    void FillDevice(const PixelRect& device, uint32 stored);
    PixelRect Shifted(PixelRect rect) const;
    /// Copies pixels one for one: a device pixel gets the one at this offset to the right and below.
    void CopyRows(const uint32* words, int32 stride, const PixelRect& size, int32 dx, int32 dy,
                  const PixelRect& device);
    /// Returns, for each device column (or row) of the clip, the source column that it shows; -1 for none.
    static std::vector<int32> MapEdges(const PixelGrid& grid, bool vertical, int32 sourceFrom, int32 sourceTo,
                                       int32 size, int32 targetFrom, int32 targetTo, int32 clipFrom, int32 clipTo);

    uint32* fWords;
    int32 fStride;
    PixelRect fBounds;
    PixelRect fClip;       ///< logical
    PixelRect fDeviceClip; ///< the same in device pixels
    PixelRect fChanged;
    PixelGrid fGrid;
    int32 fOriginX = 0;
    int32 fOriginY = 0;
    Kind fKind;
    bool fWroteTransparent = false;
    bool fMadeOpaque = false;
};

} // namespace kits
