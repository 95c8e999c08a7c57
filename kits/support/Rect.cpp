// SPDX-License-Identifier: MIT
#include "kits/support/Rect.h"

#include <algorithm>
#include <cmath>

namespace {

/// Rounds any float, including those that no integer can hold.
int32 RoundedUp(float value)
{
    const float up = std::ceil(value);
    if (!(up > -2147483648.0f))
        return up < 0 ? INT32_MIN : 0;
    return up < 2147483648.0f ? static_cast<int32>(up) : INT32_MAX;
}

} // namespace

void BPoint::ConstrainTo(BRect rect)
{
    x = std::max(std::min(x, rect.right), rect.left);
    y = std::max(std::min(y, rect.bottom), rect.top);
}

int32 BRect::IntegerWidth() const
{
    return RoundedUp(Width());
}

int32 BRect::IntegerHeight() const
{
    return RoundedUp(Height());
}

void BRect::SetLeftTop(BPoint point)
{
    left = point.x;
    top = point.y;
}

void BRect::SetRightTop(BPoint point)
{
    right = point.x;
    top = point.y;
}

void BRect::SetLeftBottom(BPoint point)
{
    left = point.x;
    bottom = point.y;
}

void BRect::SetRightBottom(BPoint point)
{
    right = point.x;
    bottom = point.y;
}

void BRect::InsetBy(float dx, float dy)
{
    left += dx;
    top += dy;
    right -= dx;
    bottom -= dy;
}

void BRect::OffsetBy(float dx, float dy)
{
    left += dx;
    top += dy;
    right += dx;
    bottom += dy;
}

void BRect::OffsetTo(float x, float y)
{
    Set(x, y, x + Width(), y + Height());
}

bool BRect::Intersects(const BRect& other) const
{
    return (*this & other).IsValid() && IsValid() && other.IsValid();
}

BRect BRect::operator&(const BRect& other) const
{
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
}

BRect BRect::operator|(const BRect& other) const
{
    if (!IsValid())
        return other;
    if (!other.IsValid())
        return *this;
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
}
