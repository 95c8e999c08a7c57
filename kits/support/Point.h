// SPDX-License-Identifier: MIT
#pragma once

class BRect;

/// A point: x grows to the right, y downwards. In pixels; pixel (0, 0) is the point (0, 0).
class BPoint {
public:
    float x = 0;
    float y = 0;

    constexpr BPoint() = default;
    constexpr BPoint(float px, float py)
        : x(px)
        , y(py)
    {
    }

    void Set(float px, float py)
    {
        x = px;
        y = py;
    }

    friend constexpr bool operator==(const BPoint&, const BPoint&) = default;
    friend constexpr BPoint operator+(BPoint a, BPoint b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr BPoint operator-(BPoint a, BPoint b) { return {a.x - b.x, a.y - b.y}; }
    constexpr BPoint operator-() const { return {-x, -y}; }
    BPoint& operator+=(BPoint other) { return *this = *this + other; }
    BPoint& operator-=(BPoint other) { return *this = *this - other; }
};

inline constexpr BPoint B_ORIGIN;
