// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/Canvas.h"

#include <vector>

namespace kits {

/// The picture that a window's view keeps: words at the screen's resolution, ready to be shown (Canvas::kShown).
/// Transparent pixels are 0.
class Surface {
public:
    bool Exists() const { return !fWords.empty(); }
    /// Sets its size, in logical pixels, on this grid. Keeps the pixels that fit, and fills new ones with the word; if
    /// edges lie elsewhere, after a change of scale, everything is new. An empty size discards the words.
    /// @return false if there is nothing to draw on
    bool SetSize(int32 width, int32 height, const PixelGrid& grid, uint32 newWord);
    void Release();

    Canvas MakeCanvas();
    /// Call it with the canvas after drawing.
    void Take(const Canvas& canvas);

    /// True if no pixel is transparent. False only means that there may be some.
    bool IsOpaque() const { return fOpaque; }
    const PixelGrid& Grid() const { return fGrid; }
    int32 Width() const { return fWidth; }   ///< logical
    int32 Height() const { return fHeight; } ///< logical
    int32 DeviceWidth() const { return fDevice.right; }
    int32 DeviceHeight() const { return fDevice.bottom; }
    const uint32* Words() const { return fWords.data(); }

private:
    std::vector<uint32> fWords;
    PixelGrid fGrid;
    PixelRect fDevice;
    int32 fWidth = 0;
    int32 fHeight = 0;
    bool fOpaque = false;
};

} // namespace kits
