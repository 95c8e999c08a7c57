// SPDX-License-Identifier: MIT
#include "kits/support/Rect.h"

#include <algorithm>

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
