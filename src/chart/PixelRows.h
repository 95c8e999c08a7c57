// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"
#include "kits/support/Rect.h"

class BBitmap;

/// Returns a colour as a word of a picture: alpha<<24 | red<<16 | green<<8 | blue.
constexpr uint32 PixelWord(rgb_color color)
{
    return static_cast<uint32>(color.alpha) << 24 | static_cast<uint32>(color.red) << 16 |
           static_cast<uint32>(color.green) << 8 | color.blue;
}

/// Returns the colour of such a word.
constexpr rgb_color PixelColor(uint32 word)
{
    return {static_cast<uint8>(word >> 16), static_cast<uint8>(word >> 8), static_cast<uint8>(word),
            static_cast<uint8>(word >> 24)};
}

/// The words of a picture as rows, for operations on many of them at once: moving, filling and recolouring cost no more
/// than the memory accesses. Rectangles are in pixels, right and bottom included, and are cut to the picture.
///
/// A view of a bitmap, which it does not own and which stays locked while this is used. A null bitmap has no words.
class PixelRows {
public:
    explicit PixelRows(BBitmap* bitmap);
    PixelRows(uint32* words, int32 width, int32 height);

    int32 Width() const { return fWidth; }
    int32 Height() const { return fHeight; }

    /// Returns the word at a pixel; 0 outside.
    uint32 At(int32 x, int32 y) const;

    /// Turns every word @p from into @p to, in one pass.
    void Replace(uint32 from, uint32 to);

    void Fill(BRect area, uint32 word);

    /// Moves the columns of @p area by @p distance pixels to the right, or left when it is negative, within its rows.
    /// Words moved out of the picture are lost; the columns they left keep their words.
    void MoveColumns(BRect area, int32 distance);

private:
    struct Span {
        int32 left, top, right, bottom; // right and bottom excluded
    };
    Span Cut(BRect area) const;

    uint32* fWords;
    int32 fWidth;
    int32 fHeight;
};
