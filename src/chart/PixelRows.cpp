// SPDX-License-Identifier: MIT
#include "src/chart/PixelRows.h"

#include "kits/interface/Bitmap.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Returns a pixel edge as an index of the picture; a value that is not a number lies outside.
int32 Edge(float coordinate, int32 size)
{
    if (std::isnan(coordinate))
        return 0;
    return static_cast<int32>(std::clamp(std::floor(coordinate), 0.0f, static_cast<float>(size)));
}

} // namespace

PixelRows::PixelRows(BBitmap* bitmap)
    : PixelRows(nullptr, 0, 0)
{
    if (bitmap == nullptr || !bitmap->IsValid())
        return;
    fWords = static_cast<uint32*>(bitmap->Bits());
    fWidth = bitmap->BytesPerRow() / 4;
    fHeight = bitmap->BitsLength() / bitmap->BytesPerRow();
}

PixelRows::PixelRows(uint32* words, int32 width, int32 height)
    : fWords(words)
    , fWidth(width)
    , fHeight(height)
{
}

PixelRows::Span PixelRows::Cut(BRect area) const
{
    return {Edge(area.left, fWidth), Edge(area.top, fHeight), Edge(area.right + 1, fWidth),
            Edge(area.bottom + 1, fHeight)};
}

uint32 PixelRows::At(int32 x, int32 y) const
{
    if (x < 0 || y < 0 || x >= fWidth || y >= fHeight)
        return 0;
    return fWords[static_cast<size_t>(y) * static_cast<size_t>(fWidth) + static_cast<size_t>(x)];
}

void PixelRows::Replace(uint32 from, uint32 to)
{
    std::replace(fWords, fWords + static_cast<ptrdiff_t>(fWidth) * fHeight, from, to);
}

void PixelRows::Fill(BRect area, uint32 word)
{
    const Span span = Cut(area);
    if (span.left >= span.right || span.top >= span.bottom)
        return;
    // Copies of the first row: for the narrow rows of a chart that is cheaper than filling each.
    uint32* const first = fWords + static_cast<ptrdiff_t>(span.top) * fWidth + span.left;
    const auto count = static_cast<size_t>(span.right - span.left);
    std::fill_n(first, count, word);
    uint32* row = first;
    for (int32 y = span.top + 1; y < span.bottom; y++)
        std::memcpy(row += fWidth, first, count * sizeof(uint32));
}

void PixelRows::MoveColumns(BRect area, int32 distance)
{
    const Span span = Cut(area);
    const int32 left = std::max(span.left, -distance);
    const int32 right = distance > 0 ? std::min(span.right, fWidth - distance) : span.right;
    if (left >= right)
        return;
    const size_t bytes = static_cast<size_t>(right - left) * sizeof(uint32);
    for (int32 y = span.top; y < span.bottom; y++) {
        uint32* row = fWords + static_cast<ptrdiff_t>(y) * fWidth;
        std::memmove(row + left + distance, row + left, bytes);
    }
}
