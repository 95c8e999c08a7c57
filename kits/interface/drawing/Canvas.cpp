// SPDX-License-Identifier: MIT
#include "kits/interface/drawing/Canvas.h"

#include "kits/interface/drawing/TextBlend.h"

#include <cstring>

namespace kits {

namespace {

constexpr uint32 kOpaque = 0xFF000000;

/// Returns the quotient rounded to the nearest integer, halves up.
int32 HalfwayRounded(int64 numerator, int64 denominator)
{
    return static_cast<int32>((2 * numerator + denominator) / (2 * denominator));
}

/// Stores a row of a picture as it is shown; returns true if it has transparent pixels. This is the hot loop of a
/// caption over a chart: without branches and calls, several pixels at once.
bool Store(const uint32* from, uint32* to, int32 count)
{
    uint32 transparent = 0;
    for (int32 i = 0; i < count; i++) {
        const uint32 word = from[i];
        const uint32 isMagic = word == B_TRANSPARENT_MAGIC_RGBA32;
        to[i] = (word | kOpaque) & (isMagic - 1);
        transparent |= isMagic;
    }
    return transparent != 0;
}

} // namespace

Canvas::Canvas(uint32* words, int32 stride, PixelRect bounds, Kind kind, const PixelGrid& grid)
    : fWords(words)
    , fStride(stride)
    , fBounds(bounds)
    , fClip{-(1 << 28), -(1 << 28), 1 << 28, 1 << 28}
    , fDeviceClip(bounds)
    , fGrid(grid)
    , fKind(kind)
{
    // A clip in logical pixels that contains every device pixel keeps lines from walking far outside.
    const auto reach = [&](int32 size) { return static_cast<int32>(size / grid.Scale()) + 2; };
    fClip = {-1, -1, reach(bounds.right), reach(bounds.bottom)};
}

void Canvas::SetClip(const PixelRect& clip)
{
    const PixelRect shifted = Shifted(clip);
    fClip = Intersection(fClip, shifted);
    fDeviceClip = fClip.IsEmpty() ? PixelRect{} : Intersection(fDeviceClip, fGrid.ToDevice(fClip));
}

void Canvas::SetOrigin(int32 x, int32 y)
{
    fOriginX = x;
    fOriginY = y;
}

PixelRect Canvas::Shifted(PixelRect rect) const
{
    return {rect.left + fOriginX, rect.top + fOriginY, rect.right + fOriginX, rect.bottom + fOriginY};
}

uint32 Canvas::ToStored(uint32 word) const
{
    if (fKind == kRaw)
        return word;
    return word == B_TRANSPARENT_MAGIC_RGBA32 ? 0 : word | kOpaque;
}

void Canvas::NoteChanged(const PixelRect& logical)
{
    fChanged = Union(fChanged, Intersection(logical, fClip));
}

void Canvas::NoteWritten(const PixelRect& device, bool transparent)
{
    if (transparent) {
        fWroteTransparent = true;
        fMadeOpaque = false;
    } else if (device == fBounds) {
        fMadeOpaque = true;
        fWroteTransparent = false;
    }
}

void Canvas::FillDevice(const PixelRect& device, uint32 stored)
{
    if (device.Width() == 1) {
        uint32* word = Row(device.top) + device.left;
        for (int32 y = device.top; y < device.bottom; y++, word += fStride)
            *word = stored;
        return;
    }
    for (int32 y = device.top; y < device.bottom; y++) {
        uint32* row = Row(y);
        std::fill(row + device.left, row + device.right, stored);
    }
}

void Canvas::FillRect(const PixelRect& rect, uint32 word)
{
    const PixelRect shifted = Shifted(rect);
    const PixelRect logical = Intersection(shifted, fClip);
    if (logical.IsEmpty())
        return;
    const PixelRect device = Intersection(fGrid.ToDevice(logical), fDeviceClip);
    if (device.IsEmpty())
        return;
    const uint32 stored = ToStored(word);
    FillDevice(device, stored);
    NoteWritten(device, stored == 0);
    NoteChanged(logical);
}

void Canvas::StrokeLine(int32 fromX, int32 fromY, int32 toX, int32 toY, uint32 word)
{
    if (fromX == toX || fromY == toY) {
        FillRect({std::min(fromX, toX), std::min(fromY, toY), std::max(fromX, toX) + 1, std::max(fromY, toY) + 1},
                 word);
        return;
    }
    const int64 width = std::abs(static_cast<int64>(toX) - fromX);
    const int64 height = std::abs(static_cast<int64>(toY) - fromY);
    const bool steep = height > width;
    // Along the longer side, always from its low end, so that both directions give the same pixels.
    int32 start = steep ? fromY : fromX;
    int32 end = steep ? toY : toX;
    int32 across = steep ? fromX : fromY;
    int32 acrossEnd = steep ? toX : toY;
    if (start > end) {
        std::swap(start, end);
        std::swap(across, acrossEnd);
    }
    const int64 length = steep ? height : width;
    const int64 rise = steep ? width : height;
    const int32 step = acrossEnd > across ? 1 : -1;
    const int32 originAlong = steep ? fOriginY : fOriginX;
    const int32 low = std::max(start, (steep ? fClip.top : fClip.left) - originAlong);
    const int32 high = std::min(end, (steep ? fClip.bottom : fClip.right) - 1 - originAlong);
    for (int32 along = low; along <= high; along++) {
        const int32 other = across + step * HalfwayRounded((static_cast<int64>(along) - start) * rise, length);
        if (steep)
            FillRect({other, along, other + 1, along + 1}, word);
        else
            FillRect({along, other, along + 1, other + 1}, word);
    }
}

std::vector<int32> Canvas::MapEdges(const PixelGrid& grid, bool vertical, int32 sourceFrom, int32 sourceTo, int32 size,
                                    int32 targetFrom, int32 targetTo, int32 clipFrom, int32 clipTo)
{
    std::vector<int32> map(static_cast<size_t>(clipTo - clipFrom), -1);
    const double ratio = static_cast<double>(targetTo - targetFrom) / (sourceTo - sourceFrom);
    const bool equal = targetTo - targetFrom == sourceTo - sourceFrom;
    const auto edge = [&](int32 source) {
        if (equal) {
            const int32 target = targetFrom + (source - sourceFrom);
            return vertical ? grid.EdgeY(target) : grid.EdgeX(target);
        }
        // The edge is first rounded to a logical pixel's edge, so that scaled pictures match the pixels of lines.
        const double target = std::floor(targetFrom + (source - sourceFrom) * ratio + 0.5);
        return vertical ? grid.EdgeY(target) : grid.EdgeX(target);
    };
    const int32 first = std::max<int32>(sourceFrom, 0);
    const int32 last = std::min(sourceTo, size);
    if (first >= last)
        return map;
    int32 begin = edge(first);
    for (int32 source = first; source < last; source++) {
        const int32 end = edge(source + 1);
        for (int32 device = std::max(begin, clipFrom); device < std::min(end, clipTo); device++)
            map[static_cast<size_t>(device - clipFrom)] = source;
        begin = end;
        if (begin >= clipTo)
            break;
    }
    return map;
}

void Canvas::CopyRows(const uint32* words, int32 stride, const PixelRect& size, int32 dx, int32 dy,
                      const PixelRect& device)
{
    const PixelRect there = Intersection(device, {size.left - dx, size.top - dy, size.right - dx, size.bottom - dy});
    bool transparent = false;
    for (int32 y = there.top; y < there.bottom; y++) {
        const uint32* const from = words + static_cast<ptrdiff_t>(y + dy) * stride + there.left + dx;
        uint32* const to = Row(y) + there.left;
        if (fKind == kRaw)
            std::memcpy(to, from, static_cast<size_t>(there.Width()) * sizeof(uint32));
        else
            transparent = Store(from, to, there.Width()) || transparent;
    }
    NoteWritten(there == device ? device : PixelRect{}, transparent);
}

void Canvas::DrawPixels(const uint32* words, int32 stride, int32 width, int32 height, const PixelRect& source,
                        const PixelRect& target, bool opaqueOnly)
{
    if (source.IsEmpty() || target.IsEmpty())
        return;
    const PixelRect shifted = Shifted(target);
    const PixelRect logical = Intersection(shifted, fClip);
    if (logical.IsEmpty())
        return;
    const PixelRect device = Intersection(fGrid.ToDevice(logical), fDeviceClip);
    if (device.IsEmpty())
        return;

    const bool unmapped = fGrid.IsUnit() && source.Width() == target.Width() && source.Height() == target.Height();
    if (unmapped && !opaqueOnly && words != fWords) {
        CopyRows(words, stride, {0, 0, width, height}, source.left - shifted.left, source.top - shifted.top, device);
        NoteChanged(logical);
        return;
    }
    const std::vector<int32> columns = MapEdges(fGrid, false, source.left, source.right, width, shifted.left,
                                                shifted.right, device.left, device.right);
    const std::vector<int32> rows = MapEdges(fGrid, true, source.top, source.bottom, height, shifted.top,
                                             shifted.bottom, device.top, device.bottom);

    const bool unitColumns = fGrid.IsUnit() && source.Width() == target.Width();
    bool transparent = false;
    bool complete = true;
    std::vector<uint32> scratch(columns.size());
    // If a bitmap is drawn onto itself further down, the copy starts at the bottom.
    const bool upwards = words == fWords && shifted.top > source.top;
    for (int32 i = 0; i < device.Height(); i++) {
        const int32 y = upwards ? device.bottom - 1 - i : device.top + i;
        const int32 sourceRow = rows[static_cast<size_t>(y - device.top)];
        if (sourceRow < 0) {
            complete = false;
            continue;
        }
        const uint32* from = words + static_cast<ptrdiff_t>(sourceRow) * stride;
        uint32* to = Row(y) + device.left;
        // Through a scratch row, because the picture may be drawn onto itself.
        const auto count = static_cast<int32>(columns.size());
        int32 begin = 0;
        int32 end = count;
        while (begin < end && columns[static_cast<size_t>(begin)] < 0)
            begin++;
        while (end > begin && columns[static_cast<size_t>(end - 1)] < 0)
            end--;
        complete = complete && begin == 0 && end == count;
        if (unitColumns && begin < end) {
            std::memcpy(scratch.data() + begin, from + columns[static_cast<size_t>(begin)],
                        static_cast<size_t>(end - begin) * sizeof(uint32));
        } else {
            for (int32 x = begin; x < end; x++)
                scratch[static_cast<size_t>(x)] = from[columns[static_cast<size_t>(x)]];
        }
        if (opaqueOnly) {
            for (int32 x = begin; x < end; x++)
                if (scratch[static_cast<size_t>(x)] != B_TRANSPARENT_MAGIC_RGBA32)
                    to[x] = ToStored(scratch[static_cast<size_t>(x)]);
                else
                    complete = false;
        } else if (fKind == kRaw) {
            std::memcpy(to + begin, scratch.data() + begin, static_cast<size_t>(end - begin) * sizeof(uint32));
        } else {
            transparent = Store(scratch.data() + begin, to + begin, end - begin) || transparent;
        }
    }
    NoteWritten(complete ? device : PixelRect{}, transparent);
    NoteChanged(logical);
}

void Canvas::DrawCoverage(const CoverageMask& mask, int32 deviceX, int32 deviceY, const PixelRect& deviceClip,
                          uint32 low, uint32 high, bool over)
{
    const int32 shiftX = fGrid.IsUnit() ? fOriginX : 0;
    const int32 shiftY = fGrid.IsUnit() ? fOriginY : 0;
    const PixelRect clip{deviceClip.left + shiftX, deviceClip.top + shiftY, deviceClip.right + shiftX,
                         deviceClip.bottom + shiftY};
    const int32 left = deviceX + shiftX + mask.left;
    const int32 top = deviceY + shiftY + mask.top;
    const PixelRect place =
        Intersection(Intersection({left, top, left + mask.width, top + mask.height}, clip), fDeviceClip);
    if (place.IsEmpty())
        return;
    const uint32 base = fKind == kShown ? low | kOpaque : low;
    const uint32 full = fKind == kShown ? high | kOpaque : high;
    for (int32 y = place.top; y < place.bottom; y++) {
        const uint8* coverage = mask.coverage.data() + static_cast<ptrdiff_t>(y - top) * mask.width - left;
        uint32* row = Row(y);
        int32 x = place.left;
        while (x < place.right) {
            // Most of a text is empty.
            uint64 several;
            if (place.right - x >= static_cast<int32>(sizeof(several))) {
                std::memcpy(&several, coverage + x, sizeof(several));
                if (several == 0) {
                    x += static_cast<int32>(sizeof(several));
                    continue;
                }
            }
            const int32 end = std::min(x + static_cast<int32>(sizeof(several)), place.right);
            for (; x < end; x++)
                if (coverage[x] != 0)
                    row[x] = BlendWords(over ? row[x] : base, full, coverage[x]);
        }
    }
    // Back to logical pixels, rounded outwards.
    const double scale = fGrid.Scale();
    const auto outward = [&](int32 pixel, int32 direction) {
        return fGrid.IsUnit() ? pixel : static_cast<int32>(std::floor(pixel / scale)) + direction;
    };
    NoteChanged({outward(place.left, -1), outward(place.top, -1), outward(place.right, 2), outward(place.bottom, 2)});
}

} // namespace kits
