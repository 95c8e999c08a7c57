// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Rect.h"

#include <algorithm>
#include <cmath>

namespace kits {

/// A rectangle of whole pixels; right and bottom are not part of it.
struct PixelRect {
    int32 left = 0;
    int32 top = 0;
    int32 right = 0;
    int32 bottom = 0;

    bool IsEmpty() const { return left >= right || top >= bottom; }
    int32 Width() const { return right - left; }
    int32 Height() const { return bottom - top; }
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

inline PixelRect Intersection(const PixelRect& a, const PixelRect& b)
{
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

/// Returns the smallest rectangle around both; an empty one adds nothing.
inline PixelRect Union(const PixelRect& a, const PixelRect& b)
{
    if (a.IsEmpty())
        return b;
    if (b.IsEmpty())
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

/// Returns the pixel that a coordinate names: the nearest, halves to the right and downwards. Held to a range in which
/// integer arithmetic on lines cannot overflow; NaN becomes its low end.
inline int32 ToPixel(float coordinate)
{
    constexpr float kLimit = 268435456; // 2^28
    if (!(coordinate > -kLimit))
        return -static_cast<int32>(kLimit);
    if (coordinate > kLimit)
        return static_cast<int32>(kLimit);
    return static_cast<int32>(std::floor(static_cast<double>(coordinate) + 0.5));
}

/// Returns the pixels of a rectangle in the platform's coordinates; empty if the rectangle is not valid.
inline PixelRect ToPixels(const BRect& rect)
{
    if (!rect.IsValid())
        return {};
    return {ToPixel(rect.left), ToPixel(rect.top), ToPixel(rect.right) + 1, ToPixel(rect.bottom) + 1};
}

inline BRect FromPixels(const PixelRect& rect)
{
    return {static_cast<float>(rect.left), static_cast<float>(rect.top), static_cast<float>(rect.right - 1),
            static_cast<float>(rect.bottom - 1)};
}

/// Maps the edges of logical pixels to the pixels of the screen. An edge goes to the nearest screen pixel counted from
/// the window's corner, so adjacent views neither overlap nor leave a gap, and at a scale of 1.5 a column is one or two
/// screen pixels wide, always with sharp edges.
class PixelGrid {
public:
    PixelGrid() = default;
    /// @param scale     screen pixels per logical pixel, above 0
    /// @param originX,  originY the place of pixel (0, 0) in its window, in logical pixels
    PixelGrid(double scale, int32 originX, int32 originY)
        : fScale(scale)
        , fOriginX(scale == 1 ? 0 : originX)
        , fOriginY(scale == 1 ? 0 : originY)
    {
    }

    double Scale() const { return fScale; }
    bool IsUnit() const { return fScale == 1; }

    /// Returns the screen pixel, from the surface's corner, at which the logical pixel begins.
    int32 EdgeX(int32 x) const { return Edge(x, fOriginX); }
    int32 EdgeY(int32 y) const { return Edge(y, fOriginY); }
    int32 EdgeX(double x) const { return Edge(x, fOriginX); }
    int32 EdgeY(double y) const { return Edge(y, fOriginY); }

    PixelRect ToDevice(const PixelRect& logical) const
    {
        if (IsUnit())
            return logical;
        return {EdgeX(logical.left), EdgeY(logical.top), EdgeX(logical.right), EdgeY(logical.bottom)};
    }

    /// Returns whether all edges within the surface are the same.
    bool SameEdges(const PixelGrid& other) const
    {
        return fScale == other.fScale && Phase(fOriginX) == other.Phase(other.fOriginX) &&
               Phase(fOriginY) == other.Phase(other.fOriginY);
    }

private:
    int32 Edge(int32 position, int32 origin) const
    {
        return IsUnit() ? position : Edge(static_cast<double>(position), origin);
    }
    int32 Edge(double position, int32 origin) const
    {
        return static_cast<int32>(std::floor((origin + position) * fScale + 0.5) - std::floor(origin * fScale + 0.5));
    }
    double Phase(int32 origin) const { return origin * fScale - std::floor(origin * fScale); }

    double fScale = 1;
    int32 fOriginX = 0;
    int32 fOriginY = 0;
};

} // namespace kits
