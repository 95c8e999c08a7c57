// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"
#include "kits/support/Point.h"

/// A rectangle of pixels. Its right column and its bottom row are part of it: (0, 0, 9, 4) is 10 pixels wide and 5
/// high, though `Width()` is 9 and `Height()` 4. With right = left - 1 it is empty and not valid.
class BRect {
public:
    float left = 0;
    float top = 0;
    float right = -1;
    float bottom = -1;

    /// (0, 0, -1, -1), which is not valid.
    constexpr BRect() = default;
    constexpr BRect(float l, float t, float r, float b)
        : left(l)
        , top(t)
        , right(r)
        , bottom(b)
    {
    }
    constexpr BRect(BPoint leftTop, BPoint rightBottom)
        : left(leftTop.x)
        , top(leftTop.y)
        , right(rightBottom.x)
        , bottom(rightBottom.y)
    {
    }

    void Set(float l, float t, float r, float b) { *this = BRect(l, t, r, b); }

    [[nodiscard]] constexpr bool IsValid() const { return left <= right && top <= bottom; }
    /// One less than the number of columns, and of rows.
    [[nodiscard]] constexpr float Width() const { return right - left; }
    [[nodiscard]] constexpr float Height() const { return bottom - top; }

    [[nodiscard]] constexpr BPoint LeftTop() const { return {left, top}; }
    [[nodiscard]] constexpr BPoint RightTop() const { return {right, top}; }
    [[nodiscard]] constexpr BPoint LeftBottom() const { return {left, bottom}; }
    [[nodiscard]] constexpr BPoint RightBottom() const { return {right, bottom}; }

    /// Positive values make it smaller on all sides.
    void InsetBy(float dx, float dy);
    void OffsetBy(float dx, float dy);
    void OffsetBy(BPoint by) { OffsetBy(by.x, by.y); }
    /// Moves its left top corner there.
    void OffsetTo(float x, float y);
    void OffsetTo(BPoint to) { OffsetTo(to.x, to.y); }

    [[nodiscard]] constexpr bool Contains(BPoint point) const
    {
        return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
    }
    [[nodiscard]] constexpr bool Contains(const BRect& other) const
    {
        return other.left >= left && other.right <= right && other.top >= top && other.bottom <= bottom;
    }
    /// True if they have a pixel in common. False if one of them is not valid.
    [[nodiscard]] bool Intersects(const BRect& other) const;

    /// The common part; not valid if there is none.
    [[nodiscard]] BRect operator&(const BRect& other) const;
    /// The smallest rectangle that contains both. One that is not valid adds nothing.
    [[nodiscard]] BRect operator|(const BRect& other) const;
    friend constexpr bool operator==(const BRect&, const BRect&) = default;
};
